#include <quxml/quxml.h>

#include <iostream>
#include <set>
#include <string>

// What most often surprises newcomers, told by the library itself. README.md lists the same in words.

namespace {

constexpr const char* text =
    "<catalog id='top'>"
    "<book id='a' item='7'/><book id='b' item='2' lang='en'/><book id='c' item='4'/>"
    "<shelf id='s'><shelf id='t'/></shelf>"
    "</catalog>";

void print(const std::string& path, const quxml::NodeSet& found) {
    std::set<std::string> ids;
    for (const quxml::Node* node : found)
        ids.insert(static_cast<const quxml::Element*>(node)->get_attribute_value("id"));
    std::cout << path << " ->";
    for (const std::string& id : ids)
        std::cout << ' ' << id;
    std::cout << '\n';
}

void show_queries() {
    const auto document = quxml::from_string(text, false);
    quxml::Element* root = document->get_root_node();
    for (const char* path : {
             "book",                        // nothing: the first step names the start node
             "catalog/book",                // a b c
             "catalog/book[2]",             // b: the item is 2
             "catalog/book[position()=2]",  // b: the second book
             "catalog/book[position()>1]",  // b: the last one is left out
             "catalog/book[last()]",        // c
             "catalog/book[@lang='en']",    // b
             "//book[@lang='en']",  // nothing: the name is cut to "lan", the quotes belong to the value
             "//book[@lang =en]",   // b
             "//shelf",             // s: below a match the search does not go on
         })
        print(path, root->find_exact_match(path));
    print("cat/bo as prefixes", root->find_substring_match("cat/bo"));
    print("cat/ook as prefixes", root->find_substring_match("cat/ook"));
}

void show_writing() {
    quxml::Document document(false);
    quxml::Element* root = document.create_root_node("a");
    root->set_attribute("b", "1 < 2");
    root->add_child_text("1 < 2");
    std::cout << document.write_to_string_formatted(false);
}

void show_reading() {
    const auto document = quxml::from_string("<p>one <b>two</b> three<!-- four --></p>", false);
    std::cout << document->write_to_string() << '\n';
}

void show_sorting() {
    const auto document = quxml::from_string("<r><x id='1'/><x id='2'/><x id='3'/></r>", false);
    document->get_root_node()->sort_children();
    std::cout << document->write_to_string() << '\n';
}

}  // namespace

int main() {
    show_queries();
    show_writing();
    show_reading();
    show_sorting();
}
