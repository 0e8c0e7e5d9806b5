// SPDX-License-Identifier: MIT
#ifndef QUXML_PLUGIN_H
#define QUXML_PLUGIN_H

#include <quxml/quxml.h>

#include <exception>

/// What the object that `host` loads has to offer, under the name "plugin".
struct Plugin {
    void (*throw_error)();
    void (*read_malformed_text)();
    bool (*catches)(void (*function)());
    quxml::Node* (*create_element)();
};

/// Whether what `function` throws is a parser error to the object that calls this; each object has its own.
static bool catches(void (*function)()) {
    try {
        function();
    } catch (const quxml::DomParserError&) {
        return true;
    } catch (const std::exception&) {
        return false;
    }
    return false;
}

#endif
