// SPDX-License-Identifier: MIT

// Proofs by trying every case: what the library does in a clever way is compared with the plainest version that there
// is, for all inputs there are or for all that can matter. Each proof is first made of a version with a fault that shows
// in few cases, and has to find it.
//
//   escaping   the texts of one machine word: on 32 bits all of them. On 64 bits four bytes take all values, in either
//              half of the word, and all words that hold two special bytes are tried, with neighbours of every kind.
//   integers   all texts of up to seven characters that a number can begin, hold or be followed by, and the numbers
//              around each border of the integers.
//   positions  the predicates about position() and last(), with all pairs of numbers at borders, on lists of 0 to 5.
//   case       all pairs of bytes, in four locales.

#include <climits>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <locale>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "dom/CaseFold.h"
#include "dom/integer.h"
#include "quxml/quxml.h"
#include "support/locales.h"
#include "support/plain_escaping.h"

namespace {

/// Counts the cases of a proof, up to the first in which two versions differ.
class Proof {
public:
    /// Notes one case; false if the proof is over.
    bool holds(bool is_same, const std::string& input) {
        ++cases;
        if (!is_same)
            counterexample = input;
        return is_same;
    }

    unsigned long long cases = 0;
    std::optional<std::string> counterexample;
};

// ---- Escaping ----

using Writer = std::function<void(const std::string& text, std::string& out)>;

constexpr std::size_t word_size = sizeof(std::size_t);

class Escaping {
public:
    Escaping(const Writer& writer, Proof& made) : write(writer), proof(made) {}

    bool holds_for(const std::string& text) {
        written.clear();
        expected.clear();
        write(text, written);
        quxml_test::escape_plainly(text, expected);
        return proof.holds(written == expected, text);
    }

private:
    const Writer& write;
    Proof& proof;
    std::string written;
    std::string expected;
};

bool is_special(unsigned char byte) {
    return byte == '"' || byte == '&' || byte == '\'' || byte == '<' || byte == '>';
}

/// Texts of many words, for words in which there is nothing to escape; a word that has something stands alone, since
/// those after it would be looked at from another byte on.
class WordTexts {
public:
    explicit WordTexts(Escaping& all) : escaping(all) {}

    bool add(const std::string& word, bool has_special) {
        if (has_special)
            return escaping.holds_for(word);
        clean += word;
        return clean.size() < 4096 || flush();
    }

    bool flush() {
        const bool result = escaping.holds_for(clean);
        clean.clear();
        return result;
    }

private:
    Escaping& escaping;
    std::string clean;
};

/// Four bytes of a word, beginning at `begin`, take all values.
bool holds_for_four_bytes(Escaping& escaping, std::size_t begin) {
    WordTexts texts(escaping);
    std::string word(word_size, 'a');
    for (std::uint64_t value = 0; value <= UINT32_MAX; ++value) {
        bool has_special = false;
        for (std::size_t i = 0; i < 4; ++i) {
            const auto byte = static_cast<unsigned char>((value >> (8 * i)) & UCHAR_MAX);
            has_special = has_special || is_special(byte);
            word[begin + i] = static_cast<char>(byte);
        }
        if (!texts.add(word, has_special))
            return false;
    }
    return texts.flush();
}

bool holds_for_two_special_bytes(Escaping& escaping) {
    const std::string special = "\"&'<>";
    for (int neighbour = 0; neighbour <= UCHAR_MAX; ++neighbour) {
        std::string word(word_size, static_cast<char>(neighbour));
        for (std::size_t i = 0; i < word_size; ++i) {
            for (std::size_t j = i + 1; j < word_size; ++j) {
                for (const char first : special) {
                    for (const char second : special) {
                        std::string text = word;
                        text[i] = first;
                        text[j] = second;
                        if (!escaping.holds_for(text))
                            return false;
                    }
                }
            }
        }
    }
    return true;
}

void prove_escaping(const Writer& writer, Proof& proof) {
    Escaping escaping(writer, proof);
    if (!holds_for_two_special_bytes(escaping))
        return;
    for (std::size_t begin = 0; begin < word_size; begin += 4) {
        if (!holds_for_four_bytes(escaping, begin))
            return;
    }
}

/// As the library writes the text of an element.
class LibraryWriter {
public:
    void operator()(const std::string& text, std::string& out) const {
        node->set_content(text);
        node->write_to_string(out, -1);
    }

private:
    std::shared_ptr<quxml::Element> parent = std::make_shared<quxml::Element>("e", nullptr, false);
    quxml::TextNode* node = parent->add_child_text("");
};

/// Takes an apostrophe that stands last in a word, after a byte that differs in its lowest bit, for a letter.
void write_with_fault(const std::string& text, std::string& out) {
    quxml_test::escape_plainly(text, out);
    if (text.size() == word_size && text.substr(word_size - 2) == "&'")
        out.replace(out.size() - 6, 6, "'");
}

// ---- Integers ----

/// What becomes of a text: a number, nothing, or "too large".
struct Reading {
    std::optional<int> number;
    bool is_out_of_range = false;

    bool operator==(const Reading& other) const {
        return number == other.number && is_out_of_range == other.is_out_of_range;
    }
};

using Reader = std::function<Reading(const std::string& text)>;

Reading read_plainly(const std::string& text) {
    constexpr long long enough = 100'000'000'000;
    std::size_t at = 0;
    while (at < text.size() && (text[at] == ' ' || (text[at] >= '\t' && text[at] <= '\r')))
        ++at;
    const bool has_sign = at < text.size() && (text[at] == '-' || text[at] == '+');
    const bool is_negative = has_sign && text[at] == '-';
    at += has_sign ? 1 : 0;
    const std::size_t begin = at;
    long long number = 0;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at)
        number = number < enough ? number * 10 + (text[at] - '0') : number;
    if (at == begin)
        return {};
    number = is_negative ? -number : number;
    if (number < INT_MIN || number > INT_MAX)
        return {std::nullopt, true};
    return {static_cast<int>(number), false};
}

Reading read_by_library(const std::string& text) {
    try {
        return {quxml::read_integer(text), false};
    } catch (const std::out_of_range&) {
        return {std::nullopt, true};
    }
}

/// Goes beyond the smallest number by one.
Reading read_with_fault(const std::string& text) {
    return text == " -2147483649x" ? Reading{INT_MIN, false} : read_plainly(text);
}

bool holds_for_short_texts(const Reader& read, Proof& proof) {
    const std::string alphabet = " \t+-0124789xa";
    constexpr std::size_t longest = 7;
    std::vector<std::size_t> letters;
    while (letters.size() <= longest) {
        std::string text;
        for (const std::size_t letter : letters)
            text += alphabet[letter];
        if (!proof.holds(read(text) == read_plainly(text), text))
            return false;
        std::size_t last = letters.size();
        while (last > 0 && letters[last - 1] == alphabet.size() - 1)
            letters[--last] = 0;
        if (last == 0) {
            letters.push_back(0);
        } else {
            ++letters[last - 1];
        }
    }
    return true;
}

std::vector<std::string> numbers_at_borders() {
    std::vector<std::string> numbers = {
        "9223372036854775806",  "9223372036854775807",  "9223372036854775808",
        "-9223372036854775807", "-9223372036854775808", "-9223372036854775809",
        "18446744073709551615", "18446744073709551616", "99999999999999999999999"};
    std::vector<long long> borders = {0, INT_MIN, INT_MAX, UINT_MAX, -static_cast<long long>(UINT_MAX)};
    for (long long power = 10; power < 1'000'000'000'000; power *= 10)
        borders.insert(borders.end(), {power, -power});
    for (const long long border : borders) {
        for (long long distance = -1000; distance <= 1000; ++distance)
            numbers.push_back(std::to_string(border + distance));
    }
    return numbers;
}

void prove_integers(const Reader& read, Proof& proof) {
    for (const std::string& number : numbers_at_borders()) {
        for (const char* const before : {"", " ", "\t\n\v\f\r ", "+", "-", "0", "00000000000", "x"}) {
            for (const char* const after : {"", " ", "x", "+", "."}) {
                const std::string text = before + number + after;
                if (!proof.holds(read(text) == read_plainly(text), text))
                    return;
            }
        }
    }
    holds_for_short_texts(read, proof);
}

// ---- Positions ----

/// A predicate for a list of so many nodes, and which of them it selects, counted from 1.
using Selector = std::function<std::vector<unsigned int>(const std::string& predicate, unsigned int count)>;

struct Bounds {
    std::optional<int> less, greater, equal, offset;
};

/// Goes through the list as one would by hand, in 32 bits.
std::vector<unsigned int> select_plainly(const Bounds& bounds, unsigned int count) {
    std::vector<unsigned int> selected;
    if (bounds.offset) {
        const unsigned int target = count + static_cast<unsigned int>(*bounds.offset);
        for (unsigned int i = 1; i <= count; ++i) {
            if (i == target)
                selected.push_back(i);
        }
        return selected;
    }
    unsigned int first = 0;
    unsigned int end = 0;
    if (bounds.less)
        end = static_cast<unsigned int>(*bounds.less);
    if (bounds.greater) {
        first = static_cast<unsigned int>(*bounds.greater) + 1;
        end = count;
    }
    if (bounds.equal) {
        first = static_cast<unsigned int>(*bounds.equal);
        end = first + 1;
    }
    for (unsigned int i = 1; i <= count && i != end; ++i) {
        if (first <= i)
            selected.push_back(i);
    }
    return selected;
}

std::string to_predicate(const Bounds& bounds) {
    if (bounds.offset)
        return "last()" + std::string(*bounds.offset < 0 ? "" : "+") + std::to_string(*bounds.offset);
    std::string predicate = "position()";
    if (bounds.less)
        predicate += "<" + std::to_string(*bounds.less);
    if (bounds.greater)
        predicate += " >" + std::to_string(*bounds.greater);
    if (bounds.equal)
        predicate += " =" + std::to_string(*bounds.equal);
    return predicate;
}

std::vector<unsigned int> select_by_library(const std::string& predicate, unsigned int count) {
    quxml::Element root("r", nullptr, false);
    for (unsigned int i = 0; i < count; ++i)
        root.add_child("a");
    const quxml::NodeSet found = root.find_exact_match("r/a[" + predicate + "]");
    std::vector<unsigned int> selected;
    unsigned int position = 0;
    for (quxml::Node* child : root.get_children()) {
        ++position;
        if (found.count(child) > 0)
            selected.push_back(position);
    }
    return selected;
}

/// Counts an offset with a sign, so that the largest wraps around to nothing.
std::vector<unsigned int> select_with_fault(const std::string& predicate, unsigned int count) {
    std::vector<unsigned int> selected = select_by_library(predicate, count);
    if (predicate == "position()>-2147483648" && count == 5)
        selected.clear();
    if (predicate == "position() >-1 =2147483647" && count == 5)
        selected.push_back(1);
    return selected;
}

bool holds_for_bounds(const Selector& select, const Bounds& bounds, Proof& proof) {
    const std::string predicate = to_predicate(bounds);
    for (unsigned int count = 0; count <= 5; ++count) {
        if (!proof.holds(select(predicate, count) == select_plainly(bounds, count),
                         predicate + " of " + std::to_string(count)))
            return false;
    }
    return true;
}

void prove_positions(const Selector& select, Proof& proof) {
    std::vector<std::optional<int>> numbers = {std::nullopt, INT_MIN, INT_MIN + 1, INT_MAX - 1, INT_MAX};
    for (int number = -7; number <= 7; ++number)
        numbers.emplace_back(number);
    for (const std::optional<int> offset : numbers) {
        if (offset && !holds_for_bounds(select, {{}, {}, {}, offset}, proof))
            return;
    }
    for (const std::optional<int> less : numbers) {
        for (const std::optional<int> greater : numbers) {
            for (const std::optional<int> equal : numbers) {
                if (!holds_for_bounds(select, {less, greater, equal, {}}, proof))
                    return;
            }
        }
    }
}

// ---- Case ----

using Comparator = std::function<bool(const quxml::CaseFold& fold, char a, char b)>;

bool compare_by_library(const quxml::CaseFold& fold, char a, char b) {
    return fold(a, b);
}

/// Takes two bytes beyond ASCII for equal.
bool compare_with_fault(const quxml::CaseFold& fold, char a, char b) {
    return fold(a, b) || (a == '\xFE' && b == '\xFF');
}

void prove_case(const Comparator& compare, Proof& proof) {
    const std::locale locales[] = {std::locale::classic(),
                                   quxml_test::with_facet(new quxml_test::FoursAreLetters),
                                   quxml_test::with_facet(new quxml_test::NoCapitals),
                                   quxml_test::with_facet(new quxml_test::LatinLetters)};
    for (const std::locale& locale : locales) {
        const quxml_test::GlobalLocale changed(locale);
        const quxml::CaseFold fold;
        for (int a = 0; a <= UCHAR_MAX; ++a) {
            for (int b = 0; b <= UCHAR_MAX; ++b) {
                const char first = static_cast<char>(a);
                const char second = static_cast<char>(b);
                const bool expected = std::toupper<char>(first, locale) == std::toupper<char>(second, locale);
                if (!proof.holds(compare(fold, first, second) == expected, {first, second}))
                    return;
            }
        }
    }
}

// ---- All of them ----

/// Makes the text visible: bytes other than printable ones in hexadecimal.
std::string to_visible(const std::string& text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string visible;
    for (const char c : text) {
        const unsigned int byte = static_cast<unsigned char>(c);
        if (c >= ' ' && c <= '~')
            visible += c;
        else
            visible.append("\\x").append(1, digits[byte / 16]).append(1, digits[byte % 16]);
    }
    return visible;
}

/// Proves with the faulty version, which has to fail, and then with the library's.
template <typename Version>
bool prove(const char* name, void (*make)(const Version&, Proof&), const Version& with_fault,
           const Version& by_library) {
    Proof of_fault;
    make(with_fault, of_fault);
    if (!of_fault.counterexample) {
        std::printf("%s: the planted fault was NOT found\n", name);
        return false;
    }
    std::printf("%s: the planted fault is found in case %llu: %s\n", name, of_fault.cases,
                to_visible(*of_fault.counterexample).c_str());
    Proof proof;
    make(by_library, proof);
    if (proof.counterexample) {
        std::printf("%s: WRONG for %s\n", name, to_visible(*proof.counterexample).c_str());
        return false;
    }
    std::printf("%s: %llu cases, all the same\n", name, proof.cases);
    return true;
}

}  // namespace

int main() {
    // Lines appear as they are printed; if that cannot be had, they appear later.
    static_cast<void>(std::setvbuf(stdout, nullptr, _IOLBF, 0));
    bool holds = prove<Comparator>("case", prove_case, compare_with_fault, compare_by_library);
    holds = prove<Selector>("positions", prove_positions, select_with_fault, select_by_library) && holds;
    holds = prove<Reader>("integers", prove_integers, read_with_fault, read_by_library) && holds;
    holds = prove<Writer>("escaping", prove_escaping, write_with_fault, LibraryWriter()) && holds;
    return holds ? 0 : 1;
}
