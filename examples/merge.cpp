// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>

#include <iostream>

// Lays a user's settings over the defaults: what both have is taken from the user, what only one has is kept.
int main() {
    auto settings =
        quxml::from_string("<s><net dhcp='yes'><dns>1.1.1.1</dns></net><volume>5</volume></s>", true);
    auto user = quxml::from_string(
        "<s><net dhcp='no'><dns>9.9.9.9</dns><mtu>1400</mtu></net><theme>dark</theme></s>", false);
    quxml::extras::merge(*settings->get_root_node(), *user->get_root_node());
    std::cout << settings->write_to_string_formatted(false);
}
