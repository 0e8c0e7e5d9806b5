// SPDX-License-Identifier: MIT
#include <quxml/extras/extras.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>

using namespace quxml::extras;

// Reads a file and replaces it, so that a reader sees the old text or the new one, never half of it.

namespace {

// What a device does when it starts.
void count_boot(const std::string& name) {
    auto document = read_file(name);
    set_text(*document->get_root_node(), "count", require_text<int>(*document->get_root_node(), "count") + 1);
    write_file(name, *document);
}

}  // namespace

int main() {
    const std::string name =
        std::filesystem::temp_directory_path() / ("quxml-example-" + std::to_string(getpid()) + ".xml");
    std::ofstream(name) << "<boots><count>41</count></boots>";
    count_boot(name);
    std::cout << std::ifstream(name).rdbuf();
    std::filesystem::remove(name);
    try {
        read_file("no-such-file.xml");
    } catch (const FileError& error) {
        std::cout << error.what() << '\n';
    }
}
