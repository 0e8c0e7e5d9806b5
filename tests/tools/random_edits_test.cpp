// SPDX-License-Identifier: MIT

// Random edits of random documents, compared with a second engine of the plainest kind. It has each document as a list of the
// pieces that it was put together from, so it never has to find anything in a text: an edit exchanges pieces. What it
// cannot know is how much white space add and remove take or give; there the rest of the document has to be right.
//
// Each round of a test has a seed of its own. `--gtest_shuffle --gtest_repeat=100` goes on with others.

#include <gtest/gtest.h>
#include <quxml/Document.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "converters.h"
#include "terminal/Failure.h"
#include "terminal/words.h"
#include "writing/EditedDocument.h"

namespace quxml_test {

namespace {

constexpr const char* a_umlaut = "\xc3\xa4";
constexpr const char* euro = "\xe2\x82\xac";

/// What is written, and what is read of it.
struct Way {
    std::string written;
    std::string read;
    bool has_entity = false;
};

struct PieceOfTag {
    std::string space;
    std::string name;
    std::string equals;
    char quote;
    Way value;
};

enum class Kind { start, end, text, section, comment, instruction, entity };

struct Piece {
    Kind kind;
    Way way{};  // for a start tag, what closes it
    std::string name{};
    std::vector<PieceOfTag> attributes{};
    bool is_empty = false;  // <a/>
};

using Pieces = std::vector<Piece>;

std::string write(const Piece& piece) {
    if (piece.kind != Kind::start)
        return piece.way.written;
    std::string text = '<' + piece.name;
    for (const PieceOfTag& one : piece.attributes)
        text += one.space + one.name + one.equals + one.quote + one.value.written + one.quote;
    return text + piece.way.written;
}

std::string write(const Pieces& pieces) {
    std::string text;
    for (const Piece& piece : pieces)
        text += write(piece);
    return text;
}

std::string replace_all(std::string text, const std::string& part, const std::string& replacement) {
    for (std::size_t place = text.find(part); place != std::string::npos;
         place = text.find(part, place + replacement.size()))
        text.replace(place, part.size(), replacement);
    return text;
}

bool is_blank(const std::string& text) {
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

/// The name that the library reads; only q is not declared.
std::string get_read_name(const std::string& name) {
    if (name.compare(0, 5, "xmlns") == 0)
        return "";
    return name.compare(0, 2, "q:") == 0 ? name : name.substr(tool::get_place_after(name.find(':')));
}

class Random {
public:
    explicit Random(unsigned seed) : engine(seed) {}

    std::size_t below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(engine);
    }

    template <typename Item>
    Item choose(const std::vector<Item>& all) {
        return all[below(all.size())];
    }

    std::string choose(std::initializer_list<const char*> all) { return *(all.begin() + below(all.size())); }

private:
    std::mt19937 engine;
};

/// The pieces of a document and all that its edits need to know about it.
class RandomDocument {
public:
    explicit RandomDocument(Random& numbers) : random(numbers), line_end(random.choose({"\n", "\r\n"})) {
        prolog = random.choose({"", "<?xml version='1.0' encoding='ENCODING'?>",
                                "<?xml version=\"1.0\" encoding=\"ENCODING\"?>\n"});
        prolog += random.choose({"", "<!-- <a> -->\n", "<?pi <a>?>"});
        prolog += "<!DOCTYPE a [<!ENTITY e 'val'> <!-- <b> -->\n<!ENTITY f '<b>x</b>'>]>\n";
        prolog = replace_all(prolog, "\n", line_end);
        add_element(0);
        add_space();
    }

    Pieces pieces;
    std::string prolog;

    std::string get_line_end() const { return line_end; }

private:
    void add(Piece piece) {
        piece.way.written = replace_all(piece.way.written, "\n", line_end);
        pieces.push_back(std::move(piece));
    }

    void add_element(int level) {
        const std::string name = random.choose({"a", "b", "c", "p:a", "q:a"});
        Piece start{Kind::start, {random.choose({"", " ", "\n"}), ""}, name};
        if (level == 0)
            start.attributes.push_back({" ", "xmlns:p", " = ", '"', {"urn:p", ""}});
        for (const char* attribute : {"n", "m", "p:n", "xml:lang", "q:n", "xmlns"})
            if (random.below(4) == 0)
                start.attributes.push_back(create_attribute(attribute));
        start.is_empty = level == 4 || random.below(4) == 0;
        start.way.written += start.is_empty ? "/>" : ">";
        const bool is_empty = start.is_empty;
        add(std::move(start));
        if (is_empty)
            return;
        const std::string kind = random.choose({"text", "items", "items", "mixed", "nothing"});
        const std::size_t count = kind == "nothing" ? 0 : 1 + random.below(kind == "text" ? 2 : 4);
        for (std::size_t i = 0; i != count; ++i) {
            if (kind != "items")
                add_text();
            if (kind != "text")
                add_item(level + 1);
        }
        add({Kind::end, {"</" + name + random.choose({">", " >"}), ""}, name});
    }

    PieceOfTag create_attribute(const std::string& name) {
        const std::vector<Way> values{
            {"1", "1"},           {"", ""},           {"it&apos;s", "it's"}, {"&#65;&#x42;", "AB"},
            {a_umlaut, a_umlaut}, {"x > y", "x > y"}, {"&e;", "val", true},  {"&lt;a&gt;", "<a>"}};
        return {replace_all(random.choose({" ", "  ", "\n  "}), "\n", line_end), name,
                random.choose({"=", " = "}), random.choose<char>({'"', '\''}), random.choose(values)};
    }

    void add_item(int level) {
        add_space();
        const std::string kind = random.choose({"element", "element", "element", "comment", "instruction"});
        if (kind == "element")
            add_element(level);
        else if (kind == "comment")
            add({Kind::comment, {random.choose({"<!-- c -->", "<!--\n<a>\n-->"}), ""}});
        else
            add({Kind::instruction, {"<?pi <a>?>", ""}});
        add_space();
    }

    void add_space() {
        const std::string space = random.choose({"", "", " ", "\n", "\n  ", "\n\n\t"});
        add({Kind::text, {space, space}});
    }

    void add_text() {
        const std::vector<Way> texts{{"x", "x"},           {"a &amp; b", "a & b"}, {"&#65;", "A"},
                                     {a_umlaut, a_umlaut}, {"x]]", "x]]"},         {"x\ny", "x\ny"},
                                     {"\n", "\n"},         {"  ", "  "},           {"&#32;", " "}};
        const std::size_t kind = random.below(8);
        if (kind == 0)
            add({Kind::section, {random.choose({"<![CDATA[<a>]]>", "<![CDATA[]]>"}), ""}});
        else if (kind == 1)
            add({Kind::entity, {random.choose({"&e;", "&f;"}), ""}});
        else
            add({Kind::text, random.choose(texts)});
    }

    Random& random;
    std::string line_end;
};

/// What is in an element, below it and directly.
struct Content {
    std::size_t begin;  // the piece after the start tag
    std::size_t end;    // the end tag; the same if there is none
    std::size_t elements = 0;
    std::size_t others = 0;  // comments, instructions and references
    std::size_t sections = 0;
    std::string written{};  // the text outside of sections
    std::string read{};

    /// The text that the library reads, if nothing else is there.
    std::string get_text() const { return read[0] == '\n' && is_blank(read) ? "" : read; }
};

Content get_content(const Pieces& pieces, std::size_t start) {
    Content content{start + 1, start + 1};
    int depth = pieces[start].is_empty ? 0 : 1;
    for (std::size_t i = start + 1; depth != 0; ++i) {
        const Piece& piece = pieces[i];
        content.end = i;
        if (depth == 1) {
            content.elements += piece.kind == Kind::start ? 1 : 0;
            content.sections += piece.kind == Kind::section ? 1 : 0;
            content.others +=
                piece.kind == Kind::comment || piece.kind == Kind::instruction || piece.kind == Kind::entity
                    ? 1
                    : 0;
            content.written += piece.kind == Kind::text ? piece.way.written : "";
            content.read += piece.kind == Kind::text ? piece.way.read : "";
        }
        depth += piece.kind == Kind::start && !piece.is_empty ? 1 : 0;
        depth -= piece.kind == Kind::end ? 1 : 0;
    }
    return content;
}

// ---- The second engine ----

std::vector<std::size_t> find_elements(const Pieces& pieces) {
    std::vector<std::size_t> starts;
    for (std::size_t i = 0; i != pieces.size(); ++i)
        if (pieces[i].kind == Kind::start)
            starts.push_back(i);
    return starts;
}

std::string escape(const std::string& value) {
    return replace_all(replace_all(value, "&", "&amp;"), "<", "&lt;");
}

std::string escape(const std::string& value, char quote) {
    const std::string escaped = replace_all(replace_all(escape(value), "\n", "&#10;"), "\t", "&#9;");
    return quote == '"' ? replace_all(escaped, "\"", "&quot;") : replace_all(escaped, "'", "&apos;");
}

void set(Piece& tag, const tool::Setting& setting) {
    const auto last =
        std::find_if(tag.attributes.rbegin(), tag.attributes.rend(),
                     [&](const PieceOfTag& one) { return get_read_name(one.name) == setting.first; });
    if (last == tag.attributes.rend()) {
        const bool is_first = tag.attributes.empty();
        const char quote = is_first ? '"' : tag.attributes.back().quote;
        tag.attributes.push_back({is_first ? " " : tag.attributes.back().space,
                                  setting.first,
                                  "=",
                                  quote,
                                  {escape(setting.second, quote), setting.second}});
    } else if (last->value.read != setting.second || last->value.has_entity) {
        last->value = {escape(setting.second, last->quote), setting.second};
    }
}

void unset(Piece& tag, const std::string& name) {
    const auto is_meant = [&](const PieceOfTag& one) { return get_read_name(one.name) == name; };
    tag.attributes.erase(std::remove_if(tag.attributes.begin(), tag.attributes.end(), is_meant),
                         tag.attributes.end());
}

/// Makes <a></a> of <a/>.
void open(Pieces& pieces, std::size_t start) {
    Piece& tag = pieces[start];
    const std::string space = tag.way.written.substr(0, tag.way.written.size() - 2);
    tag.way.written = (space.find('\n') == std::string::npos ? "" : space) + '>';
    tag.is_empty = false;
    const Piece end{Kind::end, {"</" + tag.name + '>', ""}, tag.name};
    pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(start) + 1, end);
}

void replace_content(Pieces& pieces, const Content& content, const Piece& piece) {
    const auto begin = pieces.begin() + static_cast<std::ptrdiff_t>(content.begin);
    pieces.erase(begin, pieces.begin() + static_cast<std::ptrdiff_t>(content.end));
    pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(content.begin), piece);
}

/// False if that is refused.
bool set_text(Pieces& pieces, std::size_t start, const std::string& value, const std::string& line_end) {
    const Content content = get_content(pieces, start);
    if (content.elements + content.others != 0)
        return false;
    if (content.sections == 0 && content.get_text() == value)
        return true;
    const bool is_section = content.sections != 0 && is_blank(content.read) && !value.empty();
    std::string written = is_section ? "<![CDATA[" + replace_all(value, "]]>", "]]]]><![CDATA[>") + "]]>"
                                     : replace_all(escape(value), "]]>", "]]&gt;");
    if (pieces[start].is_empty)
        open(pieces, start);
    replace_content(pieces, content,
                    {is_section ? Kind::section : Kind::text, {replace_all(written, "\n", line_end), value}});
    return true;
}

bool add(Pieces& pieces, std::size_t start, const std::string& name) {
    const Content content = get_content(pieces, start);
    const bool has_nothing_else = content.elements + content.others + content.sections == 0;
    if (content.elements == 0 && (content.sections != 0 || !is_blank(content.read)))
        return false;
    if (has_nothing_else && !content.get_text().empty() && !is_blank(content.written))
        return false;
    if (pieces[start].is_empty)
        open(pieces, start);
    const std::string prefix = pieces[start].name.compare(0, 2, "p:") == 0 ? "p:" : "";
    pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(content.end),
                  {Kind::start, {"/>", ""}, prefix + name, {}, true});
    return true;
}

std::size_t find_parent(const Pieces& pieces, std::size_t start) {
    std::size_t depth = 0;
    for (std::size_t i = start; i != 0;) {
        --i;
        depth += pieces[i].kind == Kind::end ? 1U : 0U;
        if (pieces[i].kind != Kind::start || pieces[i].is_empty)
            continue;
        if (depth == 0)
            return i;
        --depth;
    }
    return 0;
}

bool remove(Pieces& pieces, std::size_t start) {
    const Content around = get_content(pieces, find_parent(pieces, start));
    if (around.elements + around.others + around.sections == 1 && !is_blank(around.read))
        return false;
    const Content content = get_content(pieces, start);
    const std::size_t end = pieces[start].is_empty ? content.end : content.end + 1;
    pieces.erase(pieces.begin() + static_cast<std::ptrdiff_t>(start),
                 pieces.begin() + static_cast<std::ptrdiff_t>(end));
    return true;
}

// ---- Both engines ----

/// The document with its declaration, in its encoding; in ISO-8859-1 there is no euro sign, and two bytes are one.
std::string encode(const std::string& document, const std::string& encoding) {
    const std::string text = replace_all(document, "ENCODING", encoding);
    if (encoding == "ISO-8859-1")
        return replace_all(replace_all(text, euro, "&#8364;"), a_umlaut, "\xe4");
    if (encoding != "UTF-16")
        return text;
    std::string bytes = "\xff\xfe";
    for (std::size_t i = 0; i != text.size(); ++i) {
        const std::string rest = text.substr(i, 3);
        const bool is_umlaut = rest.compare(0, 2, a_umlaut) == 0;
        bytes += rest == euro ? std::string("\xac\x20") : std::string(1, is_umlaut ? '\xe4' : text[i]) + '\0';
        i += rest == euro ? 2U : (is_umlaut ? 1U : 0U);
    }
    return bytes;
}

std::vector<quxml::Element*> get_elements(quxml::Element* root) {
    std::vector<quxml::Element*> elements{root};
    for (quxml::Node* child : root->get_children())
        if (auto* element = dynamic_cast<quxml::Element*>(child))
            for (quxml::Element* below : get_elements(element))
                elements.push_back(below);
    return elements;
}

bool succeeds(const std::function<void()>& edit) {
    try {
        edit();
        return true;
    } catch (const tool::Failure& failure) {
        EXPECT_EQ(failure.get_code(), tool::ExitCode::malformed);
        return false;
    }
}

/// In UTF-16, each white space has a zero byte with it.
std::string without_white_space(std::string text) {
    text = replace_all(replace_all(text, std::string(1, '\0'), ""), "&#32;", "");
    text.erase(std::remove_if(text.begin(), text.end(), [](char one) { return is_blank({one}); }),
               text.end());
    return text;
}

/// How many bytes both have at their ends, none of them counted twice.
std::size_t count_common_bytes(const std::string& one, const std::string& other) {
    const std::size_t size = std::min(one.size(), other.size());
    std::size_t first = 0;
    while (first != size && one[first] == other[first])
        ++first;
    std::size_t last = 0;
    while (first + last != size && one[one.size() - 1 - last] == other[other.size() - 1 - last])
        ++last;
    return first + last;
}

/// A document in the hands of both engines.
class Both {
public:
    Both(Random& numbers, const std::string& name_of_encoding)
        : random(numbers),
          plain(numbers),
          encoding(plain.prolog.find("ENCODING") == std::string::npos && name_of_encoding == "ISO-8859-1"
                       ? "UTF-8"
                       : name_of_encoding),
          document("a.xml", get_plain_bytes()),
          starts(find_elements(plain.pieces)) {}

    std::string get_plain_text() const { return plain.prolog + write(plain.pieces); }

    std::string get_plain_bytes() const { return encode(get_plain_text(), encoding); }

    std::string take_bytes() {
        document.require_to_read_back();
        return document.take_bytes();
    }

    void set() {
        const std::vector<tool::Setting> settings{{random.choose({"n", "m"}), choose_value()},
                                                  {random.choose({"lang", "new"}), choose_value()}};
        std::vector<quxml::Element*> elements = choose([&](Piece& tag) {
            for (const tool::Setting& setting : settings)
                quxml_test::set(tag, setting);
        });
        document.set(elements, settings);
    }

    void unset() {
        const std::vector<std::string> names{random.choose({"n", "m", "lang"}), "nothing"};
        document.unset(choose([&](Piece& tag) { quxml_test::unset(tag, names[0]); }), names);
    }

    /// False if that is refused.
    bool set_text() {
        const std::size_t number = random.below(starts.size());
        const std::string read = get_content(plain.pieces, starts[number]).get_text();
        const std::string value = random.below(4) == 0 && !is_blank(read) ? read : choose_value();
        const bool is_done =
            quxml_test::set_text(plain.pieces, starts[number], value, plain.get_line_end()) &&
            !lacks(plain.pieces[starts[number] + 1]);
        expect(is_done, [&] { document.set_text({get_element(number)}, value); });
        starts = find_elements(plain.pieces);
        return is_done;
    }

    bool add() {
        const std::size_t number = random.below(starts.size());
        tool::NewElement added;
        added.name = "new";
        const bool is_done = quxml_test::add(plain.pieces, starts[number], added.name);
        expect(is_done, [&] { document.add({get_element(number)}, added); });
        return is_done;
    }

    bool remove() {
        const std::size_t number = random.below(starts.size());
        const bool is_done = number != 0 && quxml_test::remove(plain.pieces, starts[number]);
        if (number != 0)
            expect(is_done, [&] { document.remove({get_element(number)}); });
        return is_done;
    }

private:
    std::string choose_value() {
        return random.choose({"new", "1", "", "a & b", "<\"'>", "x\ny\tz", "]]>", "val", euro, a_umlaut});
    }

    /// Edits some tags.
    template <typename Change>
    std::vector<quxml::Element*> choose(Change change) {
        std::vector<quxml::Element*> chosen;
        const std::vector<quxml::Element*> elements = get_elements(document.get_tree().get_root_node());
        for (std::size_t i = 0; i != starts.size(); ++i) {
            if (random.below(3) != 0)
                continue;
            change(plain.pieces[starts[i]]);
            chosen.push_back(elements.at(i));
        }
        return chosen;
    }

    quxml::Element* get_element(std::size_t number) const {
        return get_elements(document.get_tree().get_root_node()).at(number);
    }

    /// No reference can stand in CDATA.
    bool lacks(const Piece& piece) const {
        return encoding == "ISO-8859-1" && piece.kind == Kind::section &&
               piece.way.written.find(euro) != std::string::npos;
    }

    void expect(bool is_done, const std::function<void()>& edit) const { EXPECT_EQ(succeeds(edit), is_done); }

    Random& random;
    RandomDocument plain;
    std::string encoding;
    tool::EditedDocument document;
    std::vector<std::size_t> starts;
};

class RandomEdits : public testing::Test {
protected:
    static constexpr unsigned rounds = 1000;

    /// Calls `edit` with documents in several encodings.
    template <typename Edit>
    static void repeat(Edit edit) {
        const auto& tests = *testing::UnitTest::GetInstance();
        const unsigned first =
            testing::GTEST_FLAG(shuffle) ? static_cast<unsigned>(tests.random_seed()) * rounds : 0;
        for (unsigned seed = first; seed != first + rounds && !HasFailure(); ++seed) {
            SCOPED_TRACE(seed);
            Random random(seed);
            Both both(random,
                      has_converters() ? random.choose({"UTF-8", "UTF-8", "ISO-8859-1", "UTF-16"}) : "UTF-8");
            SCOPED_TRACE(both.get_plain_text());
            edit(random, both);
        }
    }
};

TEST_F(RandomEdits, of_values_give_what_exchanged_pieces_give) {
    unsigned done = 0;
    repeat([&](Random& random, Both& both) {
        bool is_done = true;
        for (int i = 0; i != 3 && is_done; ++i) {
            const std::size_t kind = random.below(3);
            if (kind == 0)
                both.set();
            else if (kind == 1)
                both.unset();
            else
                is_done = both.set_text();
        }
        if (!is_done)
            return;
        ++done;
        EXPECT_EQ(both.take_bytes(), both.get_plain_bytes());
    });
    EXPECT_GT(done, rounds / 4);
}

TEST_F(RandomEdits, of_elements_leave_all_others_as_they_are) {
    unsigned done = 0;
    repeat([&](Random& random, Both& both) {
        const std::string before = both.get_plain_bytes();
        const bool adds = random.below(2) == 0;
        if (!(adds ? both.add() : both.remove()))
            return;
        ++done;
        const std::string after = both.take_bytes();
        EXPECT_EQ(without_white_space(after), without_white_space(both.get_plain_bytes()));
        if (!adds) {
            EXPECT_EQ(count_common_bytes(before, after), after.size());
        }
    });
    EXPECT_GT(done, rounds / 3);
}

}  // namespace

}  // namespace quxml_test
