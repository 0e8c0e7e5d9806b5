// SPDX-License-Identifier: MIT
#include <quxml/quxml.h>

#include <iostream>
#include <set>
#include <stdexcept>
#include <string>

// What most often surprises newcomers, shown by the library itself, each with the way to get what was probably wanted.
// docs/surprises.md explains it in words.

namespace {

using quxml::Element;

std::string ids(const quxml::NodeSet& found) {
    std::set<std::string> sorted;
    for (const quxml::Node* node : found)
        sorted.insert(static_cast<const Element*>(node)->get_attribute_value("id"));
    std::string line;
    for (const std::string& id : sorted)
        line += ' ' + id;
    return line;
}

void find(quxml::Node& node, const std::string& path) {
    const std::string found = ids(node.find_exact_match(path));
    std::cout << path << " ->" << found << '\n';
}

void find_prefix(quxml::Node& node, const std::string& path) {
    std::cout << path << " as prefixes ->" << ids(node.find_substring_match(path)) << '\n';
}

void write(const quxml::Node& node) {
    std::string out;
    node.write_to_string(out, -1);
    std::cout << out << '\n';
}

std::shared_ptr<quxml::Document> read(const std::string& text) {
    return quxml::from_string(text, false);
}

void first_step() {
    auto document = read("<catalog><book id='a'/><book id='b'/></catalog>");
    Element& catalog = *document->get_root_node();
    find(catalog, "book");          // the first step names the start node itself
    find(catalog, "catalog/book");  // the children
    find(catalog, "*/book");        // whatever the start node is called
}

void numbers() {
    auto document = read("<catalog><book id='a' item='7'/><book id='b' item='2'/><book id='c'/></catalog>");
    Element& catalog = *document->get_root_node();
    find(catalog, "catalog/book[2]");             // the book whose item is 2
    find(catalog, "catalog/book[position()=3]");  // the third
    find(catalog, "catalog/book[last()]");        // the last
}

void greater_than() {
    auto document = read("<r><x id='a'/><x id='b'/><x id='c'/></r>");
    Element& root = *document->get_root_node();
    find(root, "r/x[position()>1]");  // without the last
    find(root, "r/x[last()]");        // which is this one
    try {
        find(root, "r/x[position()<=2]");
    } catch (const std::invalid_argument& error) {
        std::cout << error.what() << '\n';
    }
    find(root, "r/x[position()<3]");
}

void attribute_in_search() {
    auto document = read("<r><x id='a' lang='en'/><y><x id='b' lang='en'/></y></r>");
    Element& root = *document->get_root_node();
    find(root, "//x[@lang='en']");    // asks for "lan" and a value with quotes
    find(root, "//x[@lang =en]");     // here the blank before "=" is cut off
    find(root, "r/y/x[@lang='en']");  // in a step among children
    find(root, "r/y/x[@lang =en]");   // where the blank belongs to the name
}

void one_predicate() {
    auto document = read("<r><x id='a' lang='en'/><x id='b' lang='en' new=''/></r>");
    Element& root = *document->get_root_node();
    find(root, "//x[@lang][@new]");  // only the first is looked at
    find(root, "r/x[@lang][@new]");
}

void nested() {
    auto document = read("<r><box id='outer'><box id='inner'/></box></r>");
    Element& root = *document->get_root_node();
    find(root, "//box");  // does not search below a match
    quxml::NodeSet boxes;
    for (quxml::Node* node : root.find_exact_match("//*")) {  // everything
        if (node->get_name() == "box")
            boxes.insert(node);
    }
    std::cout << "boxes of //* ->" << ids(boxes) << '\n';
}

void prefixes() {
    auto document = read("<r><book id='a'/><ebook id='b'/></r>");
    Element& root = *document->get_root_node();
    find_prefix(root, "r/book");
    find_prefix(root, "r/ook");
    for (const quxml::Node* node : root.get_children()) {
        if (node->get_name().find("ook") != std::string::npos)
            std::cout << node->get_name() << '\n';
    }
}

void mixed_text() {
    write(*read("<p>one <b>two</b> three</p>")->get_root_node());
    write(*read("<p><t>one </t><b>two</b><t> three</t></p>")->get_root_node());
}

void cdata() {
    write(*read("<p><![CDATA[1 < 2]]></p>")->get_root_node());
    write(*read("<p>1 &lt; 2</p>")->get_root_node());
}

void attribute_values() {
    Element element("a", nullptr, false);
    element.set_attribute("b", "1 < 2");
    write(element);  // not XML
    element.set_attribute("b", "1 &lt; 2");
    write(element);
}

void sorting_without_items() {
    auto document = read("<r><x id='1'/><x id='2'/><x id='3'/></r>");
    Element& root = *document->get_root_node();
    root.sort_children();
    write(root);  // namesakes without items are reversed
    int item = 0;
    for (quxml::Node* node : root.get_children())
        static_cast<Element*>(node)->set_attribute("item", std::to_string(--item));
    root.sort_children();
    write(root);
}

void reading_sorted() {
    auto document = quxml::from_string("<r><x item='2'/><x item='1'/><a/></r>", true);
    Element& root = *document->get_root_node();
    write(root);  // by names only
    root.sort_children_recursively();
    write(root);
}

void renaming_in_sorted() {
    quxml::Document document(true);
    Element& root = *document.create_root_node("r");
    root.add_child("b");
    root.add_child("c")->set_name("a");  // stays where it is
    write(root);
    root.sort_children();
    write(root);
}

void constructors() {
    Element root("r", nullptr, false);
    auto* child = new Element("x", &root, false);  // knows its parent, but the parent does not know it
    write(root);
    root.add_new_node(child);
    write(root);
}

// NOLINTBEGIN(bugprone-use-after-move,clang-analyzer-cplusplus.Move): what is left behind is what there is to show.
void exchanging_text() {
    Element root("r", nullptr, false);
    quxml::TextNode* node = root.add_child_text("old");
    std::string text = "new";
    node->set_content(std::move(text));  // text now holds the former content
    std::cout << node->get_content() << ' ' << text << '\n';
}

void absent_or_empty() {
    auto document = read("<x a=''/>");
    const Element& x = *document->get_root_node();
    std::cout << (x.get_attribute_value("a") == x.get_attribute_value("b") ? "the same" : "different")
              << '\n';
    std::cout << (x.get_attribute("b") == nullptr ? "absent" : "there") << '\n';
}

void moved_documents() {
    quxml::Document one(false);
    quxml::Document two(false);
    one.create_root_node("one");
    two.create_root_node("two");
    one = std::move(two);
    write(*two.get_root_node());  // they have exchanged their roots
}

// NOLINTEND(bugprone-use-after-move,clang-analyzer-cplusplus.Move)

void replaced_root() {
    quxml::Document document(false);
    Element* former = document.create_root_node("former");
    document.set_root_node(new Element("new", nullptr, false));
    write(*former);  // still there
    delete former;   // has to be destroyed; create_root_node would have done that
    write(*document.get_root_node());
}

void results_add_up() {
    auto document = read("<r><x id='a'/><y id='b'/></r>");
    const quxml::XPathHelper helper(
        [](const std::string& name, const std::string& test) { return name == test; });
    std::cout << ids(helper.find(document->get_root_node(), "r/x")) << '\n';
    std::cout << ids(helper.find(document->get_root_node(), "r/y")) << '\n';
}

}  // namespace

int main() {
    first_step();
    numbers();
    greater_than();
    attribute_in_search();
    one_predicate();
    nested();
    prefixes();
    mixed_text();
    cdata();
    attribute_values();
    sorting_without_items();
    reading_sorted();
    renaming_in_sorted();
    constructors();
    exchanging_text();
    absent_or_empty();
    moved_documents();
    replaced_root();
    results_add_up();
}
