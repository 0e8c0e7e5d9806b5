// SPDX-License-Identifier: MIT
#include "works.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "corpora.h"

namespace bench {

namespace {

constexpr std::size_t many_elements = 100000;
constexpr std::size_t many_siblings = 10000;
constexpr std::size_t many_attributes = 10000;
constexpr unsigned many_items = 16000;

/// What a text says, whichever library wrote it and in whatever layout.
std::string content_of(const std::string& text) {
    return quxml::from_string(text, false)->write_to_string();
}

template <class Library>
std::string content_of_tree(const typename Library::Document& document) {
    return content_of(Library::to_string(Library::write(document, false)));
}

template <class Library>
std::string elements_in(const typename Library::Document& document) {
    return std::to_string(Library::count_elements(document)) + " elements";
}

/// A tree that the functions of a run share.
template <class Library>
using Tree = std::shared_ptr<typename Library::Document>;

template <class Library>
Tree<Library> tree_of(const std::string& text) {
    return std::make_shared<typename Library::Document>(Library::read(text));
}

template <class Library>
Contestant reads() {
    return {Library::name, [](const std::string& text, const Path& /*path*/) -> Run {
                return {nullptr, [text] { Library::read(text); },
                        [text] { return elements_in<Library>(Library::read(text)); }};
            }};
}

Contestant reads_sorted() {
    return {"sorted", [](const std::string& text, const Path& /*path*/) -> Run {
                return {nullptr, [text] { Quxml::read_sorted(text); },
                        [text] { return elements_in<Quxml>(Quxml::read_sorted(text)); }};
            }};
}

Contestant reads_unsorted() {
    return {"unsorted", [](const std::string& text, const Path& /*path*/) -> Run {
                return {nullptr, [text] { Quxml::read(text); },
                        [text] { return elements_in<Quxml>(Quxml::read(text)); }};
            }};
}

template <class Library, bool Formatted>
Contestant writes() {
    return {Library::name, [](const std::string& text, const Path& /*path*/) -> Run {
                const Tree<Library> tree = tree_of<Library>(text);
                return {nullptr, [tree] { Library::write(*tree, Formatted); },
                        [tree] { return content_of(Library::to_string(Library::write(*tree, Formatted))); }};
            }};
}

template <class Library>
Contestant copies() {
    return {Library::name, [](const std::string& text, const Path& /*path*/) -> Run {
                const Tree<Library> tree = tree_of<Library>(text);
                const auto copy = std::make_shared<typename Library::Document>();
                return {[copy] { copy->reset(); }, [tree, copy] { *copy = Library::copy(*tree); },
                        [copy] { return content_of_tree<Library>(*copy); }};
            }};
}

template <class Library>
Contestant destroys() {
    return {Library::name, [](const std::string& text, const Path& /*path*/) -> Run {
                const auto tree = std::make_shared<typename Library::Document>();
                return {[tree, text] { *tree = Library::read(text); }, [tree] { tree->reset(); },
                        [tree] { return std::string(*tree ? "still there" : "gone"); }};
            }};
}

template <class Library, bool Filled>
Contestant builds() {
    return {Library::name, [](const std::string& /*text*/, const Path& /*path*/) -> Run {
                const auto tree = std::make_shared<typename Library::Document>();
                return {[tree] { tree->reset(); }, [tree] { *tree = Library::build(many_elements, Filled); },
                        [tree] { return content_of_tree<Library>(*tree); }};
            }};
}

template <class Library>
Contestant finds() {
    return {Library::name, [](const std::string& text, const Path& path) -> Run {
                const Tree<Library> tree = tree_of<Library>(text);
                return {nullptr, [tree, path] { Library::find(*tree, path); },
                        [tree, path] { return std::to_string(Library::find(*tree, path)) + " nodes"; }};
            }};
}

/// The least that a query can do: build its result, knowing the nodes and their order.
Contestant builds_node_set() {
    return {"node set", [](const std::string& text, const Path& path) -> Run {
                const Tree<Quxml> tree = tree_of<Quxml>(text);
                const auto nodes = std::make_shared<const quxml::NodeSet>(
                    (*tree)->get_root_node()->find_exact_match(path.quxml));
                const auto order =
                    std::make_shared<const std::vector<quxml::Node*>>(nodes->begin(), nodes->end());
                const auto build = [tree, order] {
                    quxml::NodeSet set;
                    for (quxml::Node* node : *order)
                        set.insert(set.end(), node);
                    return set.size();
                };
                return {nullptr, build, [build] { return std::to_string(build()) + " nodes"; }};
            }};
}

template <class Library>
Contestant reads_finds_and_writes() {
    return {Library::name, [](const std::string& text, const Path& path) -> Run {
                const auto work = [text, path] {
                    const typename Library::Document tree = Library::read(text);
                    const std::size_t found = Library::find(tree, path);
                    return std::make_pair(found, Library::write(tree, false));
                };
                return {nullptr, work, [work] {
                            const auto made = work();
                            return std::to_string(made.first) + content_of(Library::to_string(made.second));
                        }};
            }};
}

template <class Library>
Contestant looks_at_names() {
    return {Library::name, [](const std::string& text, const Path& /*path*/) -> Run {
                const Tree<Library> tree = tree_of<Library>(text);
                return {nullptr, [tree] { Library::look_at_names(*tree); },
                        [tree] { return std::to_string(Library::look_at_names(*tree)); }};
            }};
}

Contestant adds(const char* name, Quxml::Document (*make)(const std::vector<unsigned>&)) {
    return {name, [make](const std::string& /*text*/, const Path& /*path*/) -> Run {
                const auto items =
                    std::make_shared<const std::vector<unsigned>>(shuffled_numbers(many_items));
                const auto tree = std::make_shared<Quxml::Document>();
                return {[tree] { tree->reset(); }, [tree, items, make] { *tree = make(*items); },
                        [tree] { return content_of_tree<Quxml>(*tree); }};
            }};
}

/// A file that is gone with the last copy of the pointer.
std::shared_ptr<const std::string> temporary_file() {
    const std::string name =
        std::filesystem::temp_directory_path() / ("quxml-bench-" + std::to_string(::getpid()));
    return {new std::string(name), [](const std::string* file) {
                std::filesystem::remove(*file);
                delete file;
            }};
}

std::string text_of_file(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

Contestant writes_file(const char* name, void (*write)(const Quxml::Document&, const std::string&)) {
    return {name, [write](const std::string& text, const Path& /*path*/) -> Run {
                const Tree<Quxml> tree = tree_of<Quxml>(text);
                const auto file = temporary_file();
                return {nullptr, [tree, file, write] { write(*tree, *file); },
                        [file] { return text_of_file(*file); }};
            }};
}

template <class Library>
Contestant sorts() {
    return {Library::name, [](const std::string& text, const Path& /*path*/) -> Run {
                const auto tree = std::make_shared<typename Library::Document>();
                return {[tree, text] { *tree = Library::read(text); }, [tree] { Library::sort(*tree); },
                        [tree] { return content_of_tree<Library>(*tree); }};
            }};
}

template <class Library>
Contestant looks_up(bool (*has)(const typename Library::Document&, const char*)) {
    return {Library::name, [has](const std::string& text, const Path& /*path*/) -> Run {
                const Tree<Library> tree = tree_of<Library>(text);
                return {nullptr, [tree, has] { has(*tree, "last"); },
                        [tree, has] { return std::string(has(*tree, "last") ? "found" : "missed"); }};
            }};
}

std::vector<Input> inputs_of(std::vector<Corpus> texts) {
    std::vector<Input> inputs;
    inputs.reserve(texts.size());
    for (Corpus& corpus : texts)
        inputs.push_back({std::move(corpus.name), std::move(corpus.text), {}});
    return inputs;
}

/// Such an input is called by its path.
Input query(std::string (*text)(), const char* path, const char* xpath) {
    return {path, text, {path, xpath}};
}

/// About 100,000 elements.
std::string many_groups() {
    constexpr int count = 1000;
    return groups(count);
}

/// 25 MB when it is formatted.
std::string large_list() {
    constexpr int count = 4000;
    return groups(count);
}

std::vector<Input> queries() {
    return {
        query(many_groups, "//name", "//name"),
        query(many_groups, "//entry", "//entry"),
        query(many_groups, "/list//value", "/list//value"),
        query(many_groups, "list/group/entry", "/list/group/entry"),
        query(many_groups, "list/group/entry/name", "/list/group/entry/name"),
        query(many_groups, "list/*/entry", "/list/*/entry"),
        query(many_groups, "list/group/", "/list/group/node()"),
        query(many_groups, "//*", "//node()"),
        query(many_groups, "//entry[@id]", "//entry[@id]"),
        query(many_groups, "//entry[@id =e777]", "//entry[@id='e777']"),
        query(many_groups, "list/group/entry[@id]", "/list/group/entry[@id]"),
        query(many_groups, "list/group/entry[@kind='k3']", "/list/group/entry[@kind='k3']"),
        query(many_groups, "list/group/entry[name='name 777']", "/list/group/entry[name='name 777']"),
        query(many_groups, "list/group/entry[2]", "/list/group/entry[@item='2']"),
        query(many_groups, "list/group/entry[position()=3]", "/list/group/entry[position()=3]"),
        query(many_groups, "list/group/entry[last()]", "/list/group/entry[last()]"),
        query(siblings, "list/entry[position()=50000]", "/list/entry[position()=50000]"),
        query(siblings, "list/entry[last()]", "/list/entry[last()]"),
        query(many_groups, "//none", "//none"),
        query(many_groups, "list/group/none", "/list/group/none"),
        query(many_groups, "list/group/entry[@none]", "/list/group/entry[@none]"),
    };
}

Input small_query() {
    return {"configuration",
            configuration,
            {"/configuration/network/interface[@name='eth5']/address",
             "/configuration/network/interface[@name='eth5']/address"}};
}

std::string row_of_siblings() {
    return different_siblings(many_siblings);
}

std::string row_of_attributes() {
    return attributes(many_attributes);
}

}  // namespace

std::vector<Work> works() {
    const std::vector<Input> originals = inputs_of(corpora());
    const std::vector<Input> canonicals = inputs_of(canonical_corpora());
    const Input no_text{std::to_string(many_elements), [] { return std::string(); }, {}};
    const Input numbered{"items", siblings, {}};
    const Input random_items{std::to_string(many_items), [] { return std::string(); }, {}};
    const Input large{"groups", large_list, {}};
    const Input row{"siblings", row_of_siblings, {"list/last", "/list/last"}};
    const Input wide{"attributes", row_of_attributes, {}};
    return {
        {"read", originals, {reads<Quxml>(), reads<Libxml2>(), reads<Pugixml>(), reads<Tinyxml2>()}},
        {"read_sorted", originals, {reads_sorted(), reads_unsorted()}},
        {"read_attributes", {wide}, {reads<Quxml>(), reads<Libxml2>()}},
        {"write_compact",
         canonicals,
         {writes<Quxml, false>(), writes<Libxml2, false>(), writes<Pugixml, false>(),
          writes<Tinyxml2, false>()}},
        {"write_formatted",
         canonicals,
         {writes<Quxml, true>(), writes<Libxml2, true>(), writes<Pugixml, true>(), writes<Tinyxml2, true>()}},
        {"copy", canonicals, {copies<Quxml>(), copies<Libxml2>(), copies<Pugixml>(), copies<Tinyxml2>()}},
        {"destroy",
         canonicals,
         {destroys<Quxml>(), destroys<Libxml2>(), destroys<Pugixml>(), destroys<Tinyxml2>()}},
        {"build",
         {no_text},
         {builds<Quxml, false>(), builds<Libxml2, false>(), builds<Pugixml, false>(),
          builds<Tinyxml2, false>()}},
        {"build_filled",
         {no_text},
         {builds<Quxml, true>(), builds<Libxml2, true>(), builds<Pugixml, true>(), builds<Tinyxml2, true>()}},
        {"find", queries(), {finds<Quxml>(), finds<Libxml2>(), finds<Pugixml>()}},
        {"find_everything", {query(many_groups, "//*", "//node()")}, {finds<Quxml>(), builds_node_set()}},
        {"find_in_small", {small_query()}, {finds<Quxml>(), finds<Libxml2>(), finds<Pugixml>()}},
        {"read_find_write_small",
         {small_query()},
         {reads_finds_and_writes<Quxml>(), reads_finds_and_writes<Libxml2>(),
          reads_finds_and_writes<Pugixml>()}},
        {"sort", {numbered}, {sorts<Quxml>(), sorts<Pugixml>()}},
        {"get_child", {row}, {looks_up<Quxml>(Quxml::has_child), looks_up<Pugixml>(Pugixml::has_child)}},
        {"find_child", {row}, {finds<Quxml>(), finds<Libxml2>(), finds<Pugixml>()}},
        {"get_attribute",
         {wide},
         {looks_up<Quxml>(Quxml::has_attribute), looks_up<Pugixml>(Pugixml::has_attribute)}},
        {"walk", canonicals, {looks_at_names<Quxml>(), looks_at_names<Libxml2>(), looks_at_names<Pugixml>()}},
        {"add_sorted",
         {random_items},
         {adds("SortedChildren", Quxml::add_sorted), adds("sort_children", Quxml::append_and_sort)}},
        {"write_file",
         {large},
         {writes_file("write_file", Quxml::write_file), writes_file("string", Quxml::write_string)}},
    };
}

}  // namespace bench
