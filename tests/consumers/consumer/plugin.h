#ifndef QUXML_PLUGIN_H
#define QUXML_PLUGIN_H

#include <quxml/quxml.h>

/// What the object that `host` loads has to offer, under the name "plugin".
struct Plugin {
    void (*throw_error)();
    void (*read_malformed_text)();
    bool (*catches)(void (*function)());
    quxml::Node* (*create_element)();
};

#endif
