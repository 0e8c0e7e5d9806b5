// SPDX-License-Identifier: MIT
#include "trees/text.h"

#include <quxml/Element.h>
#include <quxml/TextNode.h>
#include <quxml/extras/values.h>

namespace tool {

std::string get_text(const quxml::Node& node) {
    if (const auto* text = dynamic_cast<const quxml::TextNode*>(&node))
        return text->get_content();
    const auto* element = dynamic_cast<const quxml::Element*>(&node);
    return element == nullptr ? "" : quxml::extras::text_of(*element);
}

}  // namespace tool
