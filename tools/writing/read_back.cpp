// SPDX-License-Identifier: MIT
#include "writing/read_back.h"

#include "reading/input.h"
#include "terminal/Failure.h"
#include "terminal/messages.h"

namespace tool {

namespace {

bool reads_back(const std::string& file, const std::string& text, const TreeTest& test) {
    try {
        return test(*parse_document(file, text, Errors::silent)->get_root_node());
    } catch (const Failure& failure) {
        if (failure.get_code() != ExitCode::malformed)
            throw;
        return false;
    }
}

}  // namespace

void require_to_read_back(const std::string& file, const std::string& text, const TreeTest& test) {
    if (!reads_back(file, text, test))
        refuse_to_write(file);
}

void refuse_to_write(const std::string& file) {
    throw Failure(ExitCode::malformed,
                  get_label(file) + ": not written: the result would not be read back as it is");
}

}  // namespace tool
