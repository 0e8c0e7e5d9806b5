// SPDX-License-Identifier: MIT

// Elements of the two documents are paired from the root downwards: children of a pair by their names, then by
// their items. What is left of a name is paired in order, once the equal ones at the front and at the back are
// out of the way, so that one more element in the middle is reported as just that. Fingerprints of whole subtrees
// say which are equal; they only choose pairs, whose differences are found by looking at everything.

#include "trees/differences.h"

#include <quxml/Attribute.h>
#include <quxml/Element.h>
#include <quxml/extras/paths.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

#include "terminal/terminal.h"
#include "terminal/words.h"
#include "trees/text.h"

namespace tool {

namespace {

using quxml::Element;
using Elements = std::vector<const Element*>;

Elements get_elements(const quxml::Node& node) {
    Elements elements;
    for (const quxml::Node* child : node.get_children()) {
        if (const auto* element = dynamic_cast<const Element*>(child))
            elements.push_back(element);
    }
    return elements;
}

std::string get_item(const Element& element) {
    return element.get_attribute_value("item");
}

std::map<std::string, std::string> get_attributes(const Element& element) {
    std::map<std::string, std::string> attributes;
    for (const quxml::Attribute* attribute : element.get_attributes())
        attributes[attribute->get_name()] = attribute->get_value();
    return attributes;
}

// ---- Fingerprints ----

class Fingerprints {
public:
    explicit Fingerprints(const Element& root) {
        Elements elements{&root};
        for (std::size_t i = 0; i < elements.size(); ++i) {
            const Elements children = get_elements(*elements[i]);
            elements.insert(elements.end(), children.begin(), children.end());
        }
        std::for_each(elements.rbegin(), elements.rend(), [this](const Element* element) { add(*element); });
    }

    std::size_t get(const Element& element) const { return prints.at(&element); }

private:
    /// The children have theirs already.
    void add(const Element& element) {
        std::string summary;
        append(summary, element.get_name());
        append(summary, get_text(element));
        for (const auto& [name, value] : get_attributes(element)) {
            append(summary, name);
            append(summary, value);
        }
        Elements children = get_elements(element);
        std::stable_sort(children.begin(), children.end(), goes_before);
        for (const Element* child : children)
            append(summary, std::to_string(get(*child)));
        prints[&element] = std::hash<std::string>()(summary);
    }

    static void append(std::string& summary, const std::string& piece) {
        summary += piece;
        summary += '\0';
    }

    static bool goes_before(const Element* one, const Element* other) {
        return std::make_pair(one->get_name(), get_item(*one)) <
               std::make_pair(other->get_name(), get_item(*other));
    }

    std::unordered_map<const Element*, std::size_t> prints;
};

// ---- Pairs ----

/// An element that has no counterpart is paired with nothing.
struct Pair {
    const Element* one;
    const Element* other;
};

using Pairs = std::vector<Pair>;

struct Namesakes {
    Elements one;
    Elements other;
};

class PairFinder {
public:
    PairFinder(const Element& one, const Element& other) : prints(one), other_prints(other) {}

    Pairs pair_children(const Element& one, const Element& other) const {
        std::map<std::pair<std::string, std::string>, Namesakes> groups;
        for (const Element* child : get_elements(one))
            groups[{child->get_name(), get_item(*child)}].one.push_back(child);
        for (const Element* child : get_elements(other))
            groups[{child->get_name(), get_item(*child)}].other.push_back(child);
        Pairs pairs;
        for (const auto& [name_and_item, namesakes] : groups)
            pair_namesakes(namesakes, pairs);
        return pairs;
    }

private:
    bool are_equal(const Element* one, const Element* other) const {
        return prints.get(*one) == other_prints.get(*other);
    }

    std::size_t count_equal(const Namesakes& pair) const {
        const auto equal = [this](const Element* a, const Element* b) { return are_equal(a, b); };
        const auto end =
            std::mismatch(pair.one.begin(), pair.one.end(), pair.other.begin(), pair.other.end(), equal);
        return static_cast<std::size_t>(end.first - pair.one.begin());
    }

    /// How many are equal at the back, after the first `passed`.
    std::size_t count_equal_at_back(const Namesakes& pair, std::size_t passed) const {
        std::size_t count = 0;
        while (passed + count < std::min(pair.one.size(), pair.other.size()) &&
               are_equal(pair.one[pair.one.size() - count - 1], pair.other[pair.other.size() - count - 1]))
            ++count;
        return count;
    }

    void pair_namesakes(const Namesakes& namesakes, Pairs& pairs) const {
        const std::size_t front = count_equal(namesakes);
        const std::size_t back = count_equal_at_back(namesakes, front);
        const std::size_t middle = namesakes.one.size() - back;
        const std::size_t other_middle = namesakes.other.size() - back;
        for (std::size_t i = 0; i < std::max(middle, other_middle); ++i)
            pairs.push_back(
                {i < middle ? namesakes.one[i] : nullptr, i < other_middle ? namesakes.other[i] : nullptr});
        for (std::size_t i = 0; i < back; ++i)
            pairs.push_back({namesakes.one[middle + i], namesakes.other[other_middle + i]});
    }

    Fingerprints prints;
    Fingerprints other_prints;
};

// ---- Differences ----

std::string show(const std::string& text) {
    return quote(escape_controls(text));
}

class Comparison {
public:
    Comparison(const Element& one, const Element& other, const TakeDifference& taker)
        : finder(one, other), take(taker), pending{{&one, &other}} {}

    void run() {
        while (!pending.empty() && goes_on) {
            const Pair pair = pending.back();
            pending.pop_back();
            compare(pair);
        }
    }

private:
    void report(const std::string& line) { goes_on = goes_on && take(line); }

    void compare(const Pair& pair) {
        if (pair.other == nullptr)
            return report("- " + paths.get(*pair.one));
        if (pair.one == nullptr)
            return report("+ " + other_paths.get(*pair.other));
        compare_attributes(pair);
        compare_texts(pair);
        const Pairs pairs = finder.pair_children(*pair.one, *pair.other);
        pending.insert(pending.end(), pairs.rbegin(), pairs.rend());
    }

    void compare_attributes(const Pair& pair) {
        const std::map<std::string, std::string> attributes = get_attributes(*pair.one);
        const std::map<std::string, std::string> others = get_attributes(*pair.other);
        for (const auto& [name, value] : attributes) {
            const auto found = others.find(name);
            if (found == others.end())
                report("- " + paths.get(*pair.one) + "/@" + name + '=' + show(value));
            else if (found->second != value)
                report_change(paths.get(*pair.one) + "/@" + name, value, found->second);
        }
        for (const auto& [name, value] : others) {
            if (attributes.count(name) == 0)
                report("+ " + other_paths.get(*pair.other) + "/@" + name + '=' + show(value));
        }
    }

    void compare_texts(const Pair& pair) {
        const std::string text = get_text(*pair.one);
        const std::string other = get_text(*pair.other);
        if (text != other)
            report_change(paths.get(*pair.one), text, other);
    }

    void report_change(const std::string& path, const std::string& text, const std::string& other) {
        report("! " + path + ": " + show(text) + " -> " + show(other));
    }

    PairFinder finder;
    const TakeDifference& take;
    Pairs pending;
    quxml::extras::NodePaths paths;
    quxml::extras::NodePaths other_paths;
    bool goes_on = true;
};

}  // namespace

void find_differences(const quxml::Node& one, const quxml::Node& other, const TakeDifference& take) {
    if (one.get_name() != other.get_name()) {
        if (take("- /" + one.get_name()))
            take("+ /" + other.get_name());
        return;
    }
    Comparison(dynamic_cast<const Element&>(one), dynamic_cast<const Element&>(other), take).run();
}

}  // namespace tool
