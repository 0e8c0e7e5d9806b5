// SPDX-License-Identifier: MIT
#include "corpora.h"

#include <quxml/quxml.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <numeric>
#include <random>
#include <stdexcept>

namespace bench {

namespace {

using quxml::Element;

std::string read_file(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + name);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

Corpus file_corpus(const char* name, const char* path) {
    return {name, [path] { return read_file(path); }};
}

std::string attribute(const char* name, const std::string& value) {
    return std::string(" ") + name + "=\"" + value + "\"";
}

/// An element with text.
std::string field(const char* name, const std::string& text) {
    return std::string("<") + name + ">" + text + "</" + name + ">";
}

/// 1,000 chains, each 90 levels deep; tinyxml2 reads no more than 100.
std::string nested() {
    constexpr int chains = 1000;
    constexpr int depth = 90;
    std::string chain;
    for (int level = 0; level < depth; ++level)
        chain += "<level" + attribute("depth", std::to_string(level)) + ">";
    chain += "end";
    for (int level = 0; level < depth; ++level)
        chain += "</level>";
    std::string text = "<list>";
    for (int i = 0; i < chains; ++i)
        text += chain;
    return text + "</list>";
}

/// 5,000 elements with 20 attributes each.
std::string many_attributes() {
    constexpr int elements = 5000;
    constexpr int attributes_of_each = 20;
    std::string text = "<list>";
    for (int i = 0; i < elements; ++i) {
        text += "<point";
        for (int j = 0; j < attributes_of_each; ++j)
            text += attribute(("coordinate" + std::to_string(j)).c_str(), std::to_string(i * j));
        text += "/>";
    }
    return text + "</list>";
}

/// 5,000 paragraphs of about a kilobyte each.
std::string long_texts() {
    constexpr int paragraphs = 5000;
    constexpr int sentences = 20;
    std::string paragraph;
    for (int i = 0; i < sentences; ++i)
        paragraph +=
            "Warm &amp; dry, 5 &lt; 7: \xC3\xBC"
            "ber allem ruht der Wind. ";
    std::string text = "<list>";
    for (int i = 0; i < paragraphs; ++i)
        text += field("p", std::to_string(i) + paragraph);
    return text + "</list>";
}

std::string without_special_characters(std::string value) {
    for (char& c : value) {
        if (std::string("&<>\"\t\r\n").find(c) != std::string::npos)
            c = '.';
    }
    return value;
}

bool is_blank(const quxml::TextNode& text) {
    return text.get_content().find_first_not_of(" \t\r\n") == std::string::npos;
}

void make_canonical(Element& element) {
    for (quxml::Attribute* attribute : element.get_attributes())
        attribute->set_value(without_special_characters(attribute->get_value()));
    if (element.has_child_text() && is_blank(*element.get_child_text()))
        element.remove_child(element.get_child_text());
}

std::vector<Element*> elements_of(const quxml::Document& document) {
    std::vector<Element*> elements;
    for (quxml::Node* node : document.get_root_node()->find_exact_match("//*")) {
        if (auto* element = dynamic_cast<Element*>(node))
            elements.push_back(element);
    }
    return elements;
}

std::string canonical(const std::string& text) {
    const auto document = quxml::from_string(text, false);
    for (Element* element : elements_of(*document))
        make_canonical(*element);
    return document->write_to_string();
}

}  // namespace

std::vector<Corpus> corpora() {
    return {
        file_corpus("shared-mime-info", "/usr/share/mime/packages/freedesktop.org.xml"),
        file_corpus("xkb-data", "/usr/share/X11/xkb/rules/evdev.xml"),
        file_corpus("cldr-main", "/usr/share/unicode/cldr/common/main/cs.xml"),
        file_corpus("cldr-collation", "/usr/share/unicode/cldr/common/collation/zh.xml"),
        file_corpus("gir", "/usr/share/gir-1.0/GLib-2.0.gir"),
        file_corpus("scap", "/usr/share/xml/scap/ssg/content/ssg-debian11-ds.xml"),
        file_corpus("osinfo-db", "/usr/share/osinfo/os/centos.org/centos-7.0.xml"),
        {"siblings", siblings},
        {"nested", nested},
        {"attributes", many_attributes},
        {"texts", long_texts},
        {"configuration", configuration},
    };
}

std::vector<Corpus> canonical_corpora() {
    std::vector<Corpus> all = corpora();
    for (Corpus& corpus : all)
        corpus.text = [text = corpus.text] { return canonical(text()); };
    return all;
}

std::string configuration() {
    constexpr int interfaces = 8;
    std::string text = "<?xml version=\"1.0\"?>\n<configuration>\n  <network>\n";
    for (int i = 0; i < interfaces; ++i) {
        const std::string number = std::to_string(i);
        text += "    <interface" + attribute("name", "eth" + number) + attribute("enabled", "true") +
                ">\n      " + field("address", "10.0.0." + number) + "\n      " +
                field("netmask", "255.255.255.0") + "\n      " + field("gateway", "10.0.0.254") + "\n      " +
                field("mtu", "1500") + "\n    </interface>\n";
    }
    return text + "  </network>\n  <logging>" + field("level", "info") + field("target", "syslog") +
           "</logging>\n</configuration>\n";
}

std::string groups(int group_count) {
    constexpr int entries = 25;
    constexpr int kinds = 10;
    std::string text = "<list>";
    for (int group = 0; group < group_count; ++group) {
        text += "<group" + attribute("id", "g" + std::to_string(group)) + ">";
        for (int i = 1; i <= entries; ++i) {
            const std::string number = std::to_string(group * entries + i);
            text += "<entry" + attribute("id", "e" + number) +
                    attribute("kind", "k" + std::to_string(i % kinds)) +
                    attribute("item", std::to_string(i)) + ">" + field("name", "name " + number) +
                    field("value", number) + "<flag/></entry>";
        }
        text += "</group>";
    }
    return text + "</list>";
}

std::vector<unsigned> shuffled_numbers(unsigned count) {
    std::vector<unsigned> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 1U);
    std::mt19937 random;  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same numbers are wanted each time
    for (std::size_t i = count - 1; i > 0; --i)
        std::swap(numbers[i], numbers[random() % (i + 1)]);
    return numbers;
}

std::string siblings() {
    constexpr unsigned count = 100000;
    std::string text = "<list>";
    for (const unsigned item : shuffled_numbers(count))
        text += "<entry" + attribute("item", std::to_string(item)) + "/>";
    return text + "</list>";
}

std::string different_siblings(std::size_t n) {
    std::string text = "<list>";
    for (std::size_t i = 1; i < n; ++i)
        text += "<name" + std::to_string(i) + "/>";
    return text + "<last/></list>";
}

std::string attributes(std::size_t n) {
    std::string text = "<list";
    for (std::size_t i = 1; i < n; ++i)
        text += attribute(("a" + std::to_string(i)).c_str(), "1");
    return text + attribute("last", "1") + "/>";
}

}  // namespace bench
