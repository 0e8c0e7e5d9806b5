// SPDX-License-Identifier: MIT
#include <stdexcept>

#include "libraries.h"

namespace bench {

namespace {

struct Counter : tinyxml2::XMLVisitor {
    bool VisitEnter(const tinyxml2::XMLElement& /*element*/,
                    const tinyxml2::XMLAttribute* /*first*/) override {
        ++elements;
        return true;
    }

    std::size_t elements = 0;
};

}  // namespace

Tinyxml2::Document Tinyxml2::read(const std::string& text) {
    auto document = std::make_unique<tinyxml2::XMLDocument>();
    if (document->Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS)
        throw std::runtime_error("tinyxml2 cannot read a corpus");
    return document;
}

Tinyxml2::Text Tinyxml2::write(const Document& document, bool formatted) {
    auto printer = std::make_unique<tinyxml2::XMLPrinter>(nullptr, !formatted);
    document->Print(printer.get());
    return printer;
}

Tinyxml2::Document Tinyxml2::copy(const Document& document) {
    auto copy = std::make_unique<tinyxml2::XMLDocument>();
    document->DeepCopy(copy.get());
    return copy;
}

Tinyxml2::Document Tinyxml2::build(std::size_t count, bool filled) {
    auto document = std::make_unique<tinyxml2::XMLDocument>();
    tinyxml2::XMLElement* root = document->NewElement("list");
    document->InsertEndChild(root);
    for (std::size_t i = 0; i < count; ++i) {
        tinyxml2::XMLElement* child = root->InsertNewChildElement("entry");
        if (filled) {
            child->SetAttribute("id", "identifier");
            child->InsertNewText("text");
        }
    }
    return document;
}

std::size_t Tinyxml2::count_elements(const Document& document) {
    Counter counter;
    document->Accept(&counter);
    return counter.elements;
}

}  // namespace bench
