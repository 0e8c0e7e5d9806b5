// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

// Reads a file and replaces it, so that a reader sees the old text or the new one, never half of it.

namespace {

std::string read_file(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    std::ostringstream text;
    if (!file || !(text << file.rdbuf()))
        throw std::runtime_error("cannot read " + name);
    return text.str();
}

// For a file that has to survive a power failure, call fsync on it before it is renamed.
void replace_file(const std::string& name, const std::string& text) {
    const std::string fresh = name + ".new";
    std::ofstream file(fresh, std::ios::binary);
    file << text;
    file.close();
    if (!file || std::rename(fresh.c_str(), name.c_str()) != 0)
        throw std::runtime_error("cannot write " + name);
}

// What a device does when it starts.
void count_boot(const std::string& name) {
    auto document = quxml::from_string(read_file(name), false);
    quxml::TextNode* count = document->get_root_node()->get_child_text();
    count->set_content(std::to_string(std::stoi(count->get_content()) + 1));
    replace_file(name, document->write_to_string_formatted(true));
}

}  // namespace

int main() {
    try {
        const std::string name =
            std::filesystem::temp_directory_path() / ("quxml-example-" + std::to_string(getpid()) + ".xml");
        replace_file(name, "<boots>41</boots>");
        count_boot(name);
        std::cout << read_file(name);
        std::filesystem::remove(name);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
