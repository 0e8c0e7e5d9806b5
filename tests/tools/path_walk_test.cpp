// SPDX-License-Identifier: MIT

// Paths followed step by step select what the library's queries select; and where a value can be written in a path, the
// path with a name in its place, for which the value is given, selects the same.

#include "paths/PathWalk.h"

#include <gtest/gtest.h>
#include <quxml/Document.h>
#include <quxml/Element.h>

#include <array>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "paths/selection.h"
#include "paths/steps.h"
#include "terminal/Failure.h"

namespace {

using quxml::Element;
using tool::NameMatch;
using tool::Nodes;
using tool::Path;
using tool::PathStep;

class Random {
public:
    explicit Random(unsigned seed) : engine(seed) {}

    std::size_t below(std::size_t count) { return engine() % count; }
    bool once_in(std::size_t count) { return below(count) == 0; }

    template <typename Words>
    std::string pick(const Words& words) {
        return words.at(below(words.size()));
    }

private:
    std::mt19937 engine;
};

constexpr std::array<const char*, 6> names{"a", "b", "c", "A", "ab", "\xc3\xa4"};
constexpr std::array<const char*, 3> keys{"k", "kk", "item"};
// Each can be written in a path after / and after //.
constexpr std::array<const char*, 7> values{"x", "y", "1", "2", "02", "+1", "x y"};

void fill(Element& element, Random& random, int levels) {
    for (const char* key : keys) {
        if (random.once_in(3))
            element.set_attribute(key, random.pick(values));
    }
    if (levels == 0 || random.once_in(4)) {
        if (!random.once_in(3))
            element.add_child_text(random.pick(values));
        return;
    }
    for (std::size_t children = random.below(6); children > 0; --children)
        fill(*element.add_child(random.pick(names)), random, levels - 1);
}

std::shared_ptr<quxml::Document> create_tree(Random& random) {
    auto document = std::make_shared<quxml::Document>(false);
    fill(*document->create_root_node("a"), random, 4);
    return document;
}

/// What a query selects in document order; nothing for a path that is refused.
Nodes select(const quxml::Document& document, const Path& path, NameMatch match) {
    return tool::select(document, path, {}, match);
}

bool is_refused(const std::vector<PathStep>& steps) {
    for (const PathStep& step : steps) {
        for (const tool::Predicate& predicate : step.predicates) {
            if (!predicate.fault.empty())
                return true;
        }
    }
    return false;
}

constexpr std::array<const char*, 7> separators{"/", "/", "/", "/", "//", "//", "///"};
constexpr std::array<const char*, 9> tests{"a", "b", "c", "*", "*", "ab", "", "\xc3\x84", "\xc3\xa4"};
constexpr std::array<const char*, 19> predicates{
    "[1]",  "[2]",    "[last()]",  "[last()-1]", "[position()=2]", "[position()<3]", "[position()>1]",
    "[@k]", "[@k=x]", "[@k ='x']", "[@k =x]",    "[b=x]",          "[b='1']",        "[x]",
    "[b",   "[]",     "[@k=x]y] ", "[a=b=c]",    "[@kk=y] "};

TEST(PathWalk, selects_what_the_library_selects_for_random_paths) {
    Random random(1);
    int matches = 0;
    for (int i = 0; i < 400; ++i) {
        const std::shared_ptr<quxml::Document> document = create_tree(random);
        for (int j = 0; j < 100; ++j) {
            Path path;
            for (std::size_t steps = 1 + random.below(4); steps > 0; --steps) {
                path.text += random.pick(separators) + random.pick(tests);
                for (std::size_t count = random.below(3); count > 0; --count)
                    path.text += random.pick(predicates);
            }
            path.text += random.once_in(5) ? "/" : "";
            const std::vector<PathStep> steps = tool::get_steps(path);
            if (is_refused(steps))
                continue;
            for (const NameMatch match : {NameMatch::whole, NameMatch::prefix}) {
                const Nodes selected = select(*document, path, match);
                ASSERT_EQ(tool::PathWalk(match).take(steps, document->get_root_node()), selected)
                    << path.text;
                matches += selected.empty() ? 0 : 1;
            }
        }
    }
    EXPECT_GT(matches, 3000);
}

/// Two spellings of the same path.
struct Spellings {
    std::string literal;
    Path given;
};

/// Adds the same predicate to both, once with the value and once with a name for it.
void add_predicate(Spellings& path, Random& random, bool tests_single_node) {
    const std::string value = random.pick(values);
    const std::string name = "v" + std::to_string(path.given.values.size());
    const std::string blank = tests_single_node ? " " : "";
    switch (random.below(4)) {
        case 0: {
            const std::string key = random.pick(keys);
            path.literal += "[@" + key + blank + '=' + value + ']';
            path.given.text += "[@" + key + "=$" + name + ']';
            break;
        }
        case 1: {
            const std::string child = random.pick(names);
            path.literal += '[' + child + "='" + value + "']";
            path.given.text += '[' + child + "=$" + name + ']';
            break;
        }
        case 2: {
            const std::string number = random.pick(std::array<const char*, 4>{"1", "2", "02", "+1"});
            path.literal += '[' + number + ']';
            path.given.text += "[ $" + name + " ]";
            path.given.values[name] = number;
            return;
        }
        default: {
            const std::string other = random.pick(
                std::array<const char*, 5>{"[last()]", "[position()<3]", "[@k]", "[b=x]", "[position()=2]"});
            path.literal += other;
            path.given.text += other;
            return;
        }
    }
    path.given.values[name] = value;
}

Spellings create_spellings(Random& random) {
    Spellings path;
    for (std::size_t steps = 1 + random.below(3), i = 0; i < steps; ++i) {
        const std::string separator = random.pick(separators);
        const std::string test = random.pick(tests);
        path.literal += separator;
        const bool is_search =
            std::string_view(path.literal).substr(path.literal.size() < 2 ? 0 : path.literal.size() - 2) ==
            "//";
        path.literal += test;
        path.given.text += separator + test;
        const bool tests_single_node = i == 0 || is_search;
        for (std::size_t count = random.below(tests_single_node ? 2 : 3); count > 0; --count)
            add_predicate(path, random, tests_single_node);
    }
    const std::string end = random.once_in(5) ? "/" : "";
    path.literal += end;
    path.given.text += end;
    return path;
}

TEST(PathWalk, selects_the_same_for_a_value_and_for_a_name_for_which_it_is_given) {
    Random random(2);
    int matches = 0;
    for (int i = 0; i < 400; ++i) {
        const std::shared_ptr<quxml::Document> document = create_tree(random);
        for (int j = 0; j < 150; ++j) {
            const Spellings path = create_spellings(random);
            if (path.given.values.empty())
                continue;
            for (const NameMatch match : {NameMatch::whole, NameMatch::prefix}) {
                const Nodes selected = select(*document, {path.literal, {}}, match);
                ASSERT_EQ(select(*document, path.given, match), selected)
                    << path.literal << ' ' << path.given.text;
                matches += selected.empty() ? 0 : 1;
            }
        }
    }
    EXPECT_GT(matches, 1000);
}

}  // namespace
