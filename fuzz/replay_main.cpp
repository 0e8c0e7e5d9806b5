// SPDX-License-Identifier: MIT

// Runs a target on every file of the folders and files named, without libFuzzer, so that any compiler builds the
// targets and the ordinary test run replays seeds and former crashes. A folder that is not there counts as empty.

#include <algorithm>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "check.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> list_files(const fs::path& place) {
    if (!fs::is_directory(place))
        return {place};
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(place))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

void replay(const fs::path& file) {
    std::cout << file.filename().string() << std::endl;
    std::ifstream in(file, std::ios::binary);
    quxml_fuzz::check(in.is_open(), "the file named last cannot be opened");
    const std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(in)),
                                          std::istreambuf_iterator<char>());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

int replay_all(const std::vector<std::string>& places) {
    int count = 0;
    for (const std::string& place : places) {
        if (!fs::exists(place))
            continue;
        for (const fs::path& file : list_files(place)) {
            replay(file);
            ++count;
        }
    }
    std::cout << count << " inputs replayed\n";
    return count;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::vector<std::string> places(argv + 1, argv + argc);
        return replay_all(places) > 0 ? 0 : 1;
    } catch (const std::exception& error) {
        quxml_fuzz::fail(std::string("an exception left the target: ") + error.what());
    }
}
