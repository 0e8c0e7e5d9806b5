// SPDX-License-Identifier: MIT

// What the page calls: functions that take texts as bytes of the module's memory and return an answer of Session. The answer
// stays until the next call.

#include <emscripten/emscripten.h>

#include <exception>
#include <new>
#include <string>

#include "Session.h"

namespace {

/// The program ends when memory runs out; the page goes on.
[[maybe_unused]] const std::new_handler former = std::set_new_handler(nullptr);

playground::Session session;
std::string answer;

template <typename Work>
const char* give(const Work& work) {
    try {
        answer = work();
    } catch (const std::bad_alloc&) {
        answer = playground::make_error("This takes more memory than there is.");
    } catch (const std::exception& error) {
        answer = playground::make_error(error.what());
    }
    return answer.c_str();
}

tool::NameMatch get_match(bool prefix) {
    return prefix ? tool::NameMatch::prefix : tool::NameMatch::whole;
}

}  // namespace

extern "C" {

EMSCRIPTEN_KEEPALIVE const char* playground_read(const char* text, std::size_t size, bool keep_sorted) {
    return give([&] { return session.read(std::string(text, size), keep_sorted); });
}

EMSCRIPTEN_KEEPALIVE const char* playground_losses(const char* text, std::size_t size) {
    return give([&] { return playground::Session::list_losses(std::string(text, size)); });
}

EMSCRIPTEN_KEEPALIVE const char* playground_path(std::size_t row) {
    return give([&] { return session.get_path(row); });
}

EMSCRIPTEN_KEEPALIVE const char* playground_find(const char* path, std::size_t size) {
    return give([&] { return session.find_row(std::string(path, size)); });
}

EMSCRIPTEN_KEEPALIVE const char* playground_query(const char* path, std::size_t size, std::size_t start,
                                                  bool prefix) {
    return give([&] { return session.query(std::string(path, size), start, get_match(prefix)); });
}

EMSCRIPTEN_KEEPALIVE const char* playground_explain(const char* path, std::size_t size, bool prefix) {
    return give([&] { return playground::Session::explain(std::string(path, size), get_match(prefix)); });
}

EMSCRIPTEN_KEEPALIVE const char* playground_rows(std::size_t first, std::size_t count) {
    return give([&] { return session.get_rows(first, count); });
}

EMSCRIPTEN_KEEPALIVE const char* playground_write(bool formatted) {
    return give([&] { return session.write(formatted); });
}
}
