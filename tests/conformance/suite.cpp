// SPDX-License-Identifier: MIT
#include "conformance/suite.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>

#include "reader/libxml2_oracle.h"
#include "support/read_file.h"

namespace quxml_conformance {

namespace {

using std::filesystem::path;
using XmlTree = std::unique_ptr<xmlDoc, quxml_test::FreeTree>;

std::string to_string(const xmlChar* s) {
    return s == nullptr ? "" : std::string(s, s + xmlStrlen(s));
}

XmlTree parse(const std::string& text, const std::string& base, int options) {
    XmlTree tree(xmlReadMemory(text.data(), static_cast<int>(text.size()), base.c_str(), nullptr, options));
    if (tree == nullptr)
        throw std::runtime_error("a catalog of the suite cannot be read: " +
                                 quxml_test::describe_last_error());
    return tree;
}

/// The catalogs of the contributors: the external entities that the main catalog declares.
std::vector<std::string> list_catalogs(const path& folder) {
    const path main_catalog = folder / "xmlconf.xml";
    const XmlTree tree = parse(quxml_test::read_file(main_catalog), main_catalog, 0);
    if (tree->intSubset == nullptr)
        throw std::runtime_error("the main catalog declares nothing");
    std::vector<std::string> catalogs;
    for (const xmlNode* node = tree->intSubset->children; node != nullptr; node = node->next) {
        if (node->type == XML_ENTITY_DECL)
            catalogs.push_back(to_string(reinterpret_cast<const xmlEntity*>(node)->SystemID));
    }
    return catalogs;
}

std::string get_attribute(const xmlNode* element, const std::string& name) {
    for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next) {
        if (to_string(attribute->name) == name)
            return attribute->children == nullptr ? "" : to_string(attribute->children->content);
    }
    return "";
}

/// The kind of each file that serves a test; and how many tests there are.
struct Catalog {
    std::map<std::string, std::string> kinds;
    std::size_t tests = 0;
};

/// Adds the tests among `first`, its siblings and what is below them. Their files are named from `folder`.
void add_tests(Catalog& catalog, const xmlNode* first, const path& folder) {
    for (const xmlNode* node = first; node != nullptr; node = node->next) {
        if (node->type != XML_ELEMENT_NODE)
            continue;
        if (to_string(node->name) == "TEST") {
            const path file = (folder / get_attribute(node, "URI")).lexically_normal();
            catalog.kinds.emplace(file, get_attribute(node, "TYPE"));
            ++catalog.tests;
        }
        add_tests(catalog, node->children, folder);
    }
}

/// A contributor's catalog need not have a single root, so it is read as an entity. Its files are named from
/// its own folder; the main catalog names another one for some.
void add_tests_of(Catalog& catalog, const path& folder, const std::string& name) {
    const std::string text = "<!DOCTYPE c [<!ENTITY tests SYSTEM '" + name + "'>]><c>&tests;</c>";
    const XmlTree tree = parse(text, folder / "xmlconf.xml", XML_PARSE_NOENT);
    add_tests(catalog, xmlDocGetRootElement(tree.get()), path(name).parent_path());
}

Catalog read_catalogs(const path& folder) {
    Catalog catalog;
    for (const std::string& name : list_catalogs(folder))
        add_tests_of(catalog, folder, name);
    for (const auto& [name, kind] : catalog.kinds) {
        if (!std::filesystem::is_regular_file(folder / name))
            throw std::runtime_error("the suite lacks a file of a " + kind + " test: " + name);
    }
    return catalog;
}

std::string get_kind(const Catalog& catalog, const path& file) {
    const auto test = catalog.kinds.find(file);
    if (test != catalog.kinds.end())
        return test->second;
    return file.parent_path().filename() == "out" ? "output" : "other";
}

}  // namespace

Suite read_suite(const std::string& folder) {
    const Catalog catalog = read_catalogs(folder);
    Suite suite = {{}, catalog.tests};
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file())
            continue;
        const path file = entry.path().lexically_relative(folder);
        const std::string contributor = file.has_parent_path() ? file.begin()->string() : "suite";
        suite.files.push_back({entry.path(), contributor, get_kind(catalog, file)});
    }
    std::sort(suite.files.begin(), suite.files.end(),
              [](const SuiteFile& a, const SuiteFile& b) { return a.path < b.path; });
    return suite;
}

}  // namespace quxml_conformance
