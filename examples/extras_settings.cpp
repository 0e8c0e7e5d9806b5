// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <chrono>
#include <iostream>

using namespace quxml::extras;
using quxml::Element;

namespace {

void use_values(Element& server) {
    int port = get<int>(server, "port", 80);  // 80 if there is no such attribute
    bool tls = require<bool>(server, "tls");  // throws if there is none
    auto wait = get_text<std::chrono::milliseconds>(server, "timeout", std::chrono::seconds(5));
    std::cout << port << ' ' << tls << ' ' << wait.count() << " ms\n";
    set(server, "port", 8080);
    set_text(server, "name", "emma");
}

void remove_expired(Element& users) {
    for (Element& user : elements(users, "user")) {
        if (get(user, "expired", false))
            users.remove_child(&user);
    }
}

}  // namespace

// Settings with defaults: reads some, changes some, and shows what an error says.
int main() {
    auto settings = quxml::from_string(
        "<settings><server tls='yes' retries='3x'/><users><user/><user expired='true'/></users></settings>",
        false);
    Element& server = *find_first(*settings->get_root_node(), "settings/server");
    use_values(server);
    remove_expired(*find_first(*settings->get_root_node(), "settings/users"));
    write_formatted(std::cout, *settings);
    try {
        get(server, "retries", 3);
    } catch (const ValueError& error) {
        std::cout << error.what() << '\n';
    }
}
