// SPDX-License-Identifier: MIT

// The program that gdb looks at: everything that its printers and commands can meet, in variables that are found in a core
// without a stack too. It aborts when all of it is there. With paths as arguments it
// writes what they select instead.

#include <quxml/quxml.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

namespace seen_by_gdb {

/// Classes of a user's own.
class Chapter : public quxml::Element {
public:
    explicit Chapter(quxml::Element* owner) : Element("chapter", owner, false) {}
};

class Shown {
public:
    virtual ~Shown() = default;
};

class Appendix : public Shown, public Chapter {
public:
    using Chapter::Chapter;
};

constexpr const char* text =
    "<library><book item='1' lang='en'><title>Emma</title></book><Book "
    "item='2'/><shelf><book/></shelf></library>";

struct Seen {
    std::shared_ptr<quxml::Document> document = quxml::from_string(text, false);
    quxml::Document sorted{true};
    quxml::Document empty{false};
    quxml::Element* library = document->get_root_node();
    quxml::Element* book = static_cast<quxml::Element*>(library->get_child("book"));
    quxml::Attribute* lang = book->get_attribute("lang");
    const quxml::TextNode* title = static_cast<quxml::Element*>(book->get_child("title"))->get_child_text();
    const quxml::Node& node = *title;
    quxml::Element* odd = library->add_child("odd");
    quxml::Element* deepest = nullptr;
    quxml::Node* nothing = nullptr;
    quxml::Node* nowhere = reinterpret_cast<quxml::Node*>(8);
    quxml::Element alone{"alone", library, false};
};

// gdb finds it from everywhere, since it has linkage.
Seen seen;  // NOLINT(cert-err58-cpp): without it there is nothing to test.

}  // namespace seen_by_gdb

using seen_by_gdb::seen;

namespace {

using seen_by_gdb::Appendix;
using seen_by_gdb::Chapter;

void add_odd_nodes() {
    seen.odd->add_child_text("two\nlines, a \"quote\", a \\, \xC3\xA9 and \xFF");
    seen.odd->add_child("")->set_attribute("", "");
    seen.odd->add_child("a/b")->add_child_text(std::string(300, 'x'));
    seen.odd->add_new_node(new Chapter(seen.odd));
    seen.odd->add_new_node(new Appendix(seen.odd));
}

void add_chain(int levels) {
    seen.deepest = seen.library->add_child("chain");
    for (int level = 1; level < levels; ++level)
        seen.deepest = seen.deepest->add_child("link");
}

/// An element by its opening tag, text as it is.
void write(const std::string& path) {
    std::string out = path + '\n';
    for (const quxml::Node* node : seen.library->find_exact_match(path)) {
        if (const auto* element = dynamic_cast<const quxml::Element*>(node))
            element->write_opening_tag(out, 1);
        else if (const auto* content = dynamic_cast<const quxml::TextNode*>(node))
            content->write_to_string(out, 1);
    }
    std::cout << out << '\n';
}

/// What docs/debugging.md looks at.
[[gnu::noinline]] void abort_with_variables() {
    const std::shared_ptr<quxml::Document> document = quxml::from_string(seen_by_gdb::text, false);
    const auto* element = static_cast<const quxml::Element*>(document->get_root_node()->get_child("book"));
    [[maybe_unused]] const quxml::Attribute* lang = element->get_attribute("lang");
    [[maybe_unused]] const quxml::Node* title = element->get_child("title")->get_child("");
    std::abort();
}

}  // namespace

int main(int count, char** arguments) {
    seen.sorted.create_root_node("settings");
    add_odd_nodes();
    add_chain(2000);
    for (int number = 1; number < count; ++number)
        write(arguments[number]);
    if (count == 1)
        abort_with_variables();
}
