// SPDX-License-Identifier: MIT
#include "query/slow_engine.h"

#include <cstdint>
#include <functional>
#include <locale>
#include <stdexcept>
#include <vector>

#include <boost/algorithm/string.hpp>

// Slow on purpose: arguments are copied, lists are copied, the stack grows with the depth of the tree.

namespace quxml_test {

using quxml::Attribute;
using quxml::Element;
using quxml::Node;
using quxml::NodeList;
using quxml::NodeSet;

namespace {

const char* const one_equals_sign = "Search for child node must contain exactly one equals sign";
const char* const at_most_one_equals_sign = "Can at most have one equal sign in attribute queries";

std::deque<std::string> split(const std::string& text, const char* separators) {
    std::deque<std::string> pieces;
    boost::algorithm::split(pieces, text, boost::algorithm::is_any_of(separators),
                            boost::algorithm::token_compress_off);
    return pieces;
}

std::string without_quotes(std::string text) {
    boost::algorithm::trim_if(text, boost::algorithm::is_any_of("\"'"));
    return text;
}

bool contains(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

/// Reads a number by the standard library, whose libraries word their errors differently.
int read_number(const std::string& text) {
    try {
        return std::stoi(text);
    } catch (const std::invalid_argument&) {
        throw std::invalid_argument("stoi");
    } catch (const std::out_of_range&) {
        throw std::out_of_range("stoi");
    }
}

/// The number written `distance` characters after the start of the first `part`.
int number_after(const std::string& text, const char* part, std::size_t distance) {
    return read_number(text.substr(text.find(part) + distance));
}

unsigned int as_unsigned(int number) {
    return static_cast<unsigned int>(number);
}

/// The sum in 32 bits, said in a way that does not look like a mistake to the integer checks.
unsigned int wrapping_sum(unsigned int a, unsigned int b) {
    return static_cast<unsigned int>((std::uint64_t{a} + b) & 0xFFFFFFFFU);
}

}  // namespace

SlowEngine::SlowEngine(quxml::StringComparator compare) : comparator(compare) {}

NodeSet SlowEngine::find(Node* node, std::string path) {
    if (path.empty())
        return NodeSet();
    boost::algorithm::trim(path);
    if (path.empty())
        return NodeSet();
    std::deque<std::string> steps = split(path, "/");
    if (path.find("//") == 0) {
        steps.pop_front();
        steps.pop_front();
        skip_all_until_first_match(node, steps);
        return results;
    }
    if (steps.front().empty())
        steps.pop_front();
    if (is_correct_node(node, steps.front()))
        get_nodes_from_path(node, steps);
    return results;
}

void SlowEngine::get_nodes_from_path(Node* node, std::deque<std::string> steps) {
    if (steps.size() == 1) {
        results.insert(node);
        return;
    }
    const std::string current = steps.front();
    steps.pop_front();
    if (current.empty()) {
        skip_all_until_first_match(node, steps);
        return;
    }
    const std::string next = steps.front();
    for (Node* child : get_child_nodes(node, next))
        get_nodes_from_path(child, steps);
}

void SlowEngine::skip_all_until_first_match(Node* node, std::deque<std::string> steps) {
    if (steps.size() == 1 && is_correct_node(node, steps.front())) {
        results.insert(node);
        if (steps.front() != "*")
            return;
    } else if (is_correct_node(node, steps.front())) {
        get_nodes_from_path(node, steps);
        return;
    }
    for (Node* child : node->get_children())
        skip_all_until_first_match(child, steps);
}

NodeList SlowEngine::get_child_nodes(Node* node, std::string step) const {
    const NodeList children = node->get_children();
    if (step.empty())
        return children;
    const std::size_t opening = step.find('[');
    const std::string name_test = step.substr(0, opening);
    NodeList kept;
    for (Node* child : children) {
        if (is_correct_node(child, name_test))
            kept.push_back(child);
    }
    std::string predicates;
    if (opening != std::string::npos)
        predicates = step.substr(opening + 1);
    if (!predicates.empty())
        predicates.pop_back();
    return get_nodes_matching_attributes(kept, predicates);
}

bool SlowEngine::is_correct_node(Node* node, std::string step) const {
    if (step == "*")
        return true;
    if (step.empty())
        return false;
    const std::size_t opening = step.find('[');
    const std::string name_test = step.substr(0, opening);
    if (name_test != "*") {
        if (!comparator)
            throw std::bad_function_call();
        if (!comparator(node->get_name(), name_test))
            return false;
    }
    if (opening == std::string::npos)
        return true;
    std::string predicate = step.substr(opening + 1);
    const std::size_t closing = step.find(']');
    if (closing != std::string::npos && closing > opening)
        predicate = step.substr(opening + 1, closing - opening - 1);
    if (predicate.substr(0, 1) == "@" || !contains(predicate, "="))
        return attribute_matches_node(dynamic_cast<Element*>(node), predicate);
    const std::deque<std::string> pieces = split(predicate, "=");
    if (pieces.size() != 2)
        throw std::invalid_argument(one_equals_sign);
    return contains_child_value(node, pieces[0], without_quotes(pieces[1]));
}

NodeList SlowEngine::get_nodes_matching_attributes(NodeList& nodes, std::string predicates) const {
    if (predicates.empty())
        return nodes;
    for (const std::string& predicate : split(predicates, "]["))
        nodes = get_nodes_matching_attribute(nodes, predicate);
    return nodes;
}

NodeList SlowEngine::get_nodes_matching_attribute(NodeList nodes, std::string predicate) const {
    if (predicate.empty())
        return nodes;
    if (contains(predicate, "last()"))
        return get_last_node(predicate, nodes);
    if (contains(predicate, "position()"))
        return get_positioned_nodes(predicate, nodes);
    if (predicate[0] == '@')
        return get_node_containing_attribute(predicate.substr(1), nodes);
    if (contains(predicate, "="))
        return get_node_containing_child_value(predicate, nodes);
    try {
        static_cast<void>(read_number(predicate));
    } catch (const std::invalid_argument&) {
        return get_nodes_by_bare_literal(nodes, predicate);
    }
    return get_node_by_number(predicate, nodes);
}

NodeList SlowEngine::get_nodes_by_bare_literal(NodeList nodes, std::string literal) const {
    if (nodes.size() != 1)
        return NodeList();
    Node* const node = nodes.front();
    if (contains_child_value(node->get_parent(), node->get_name(), without_quotes(literal)))
        return nodes;
    return NodeList();
}

NodeList SlowEngine::get_node_by_number(std::string number, NodeList nodes) const {
    NodeList found;
    std::string remembered;
    for (Node* node : nodes) {
        auto* const element = dynamic_cast<Element*>(node);
        if (element == nullptr)
            continue;
        if (element->get_attribute("item") == nullptr && read_number(number) == 1 &&
            element->get_name() != remembered) {
            found.push_back(element);
            remembered = element->get_name();
        }
        if (element->get_attribute_value("item") == number)
            found.push_back(element);
    }
    return found;
}

NodeList SlowEngine::get_last_node(std::string predicate, NodeList nodes) const {
    const unsigned int target =
        wrapping_sum(static_cast<unsigned int>(nodes.size()), as_unsigned(index_from_last(predicate)));
    unsigned int position = 1;
    for (Node* node : nodes) {
        if (position == target)
            return NodeList(1, node);
        ++position;
    }
    return NodeList();
}

int SlowEngine::index_from_last(std::string predicate) const {
    const std::string offset = predicate.substr(predicate.find("last()") + std::string("last()").size());
    return offset.empty() ? 0 : read_number(offset);
}

NodeList SlowEngine::get_positioned_nodes(std::string predicate, NodeList nodes) const {
    const auto [first, second] = get_position_range(predicate, static_cast<unsigned int>(nodes.size()));
    NodeList found;
    if (second == 1)
        return found;
    unsigned int i = 1;
    for (Node* node : nodes) {
        if (first <= i)
            found.push_back(node);
        ++i;
        if (i == second)
            break;
    }
    return found;
}

std::pair<unsigned int, unsigned int> SlowEngine::get_position_range(std::string predicate,
                                                                     unsigned int count) const {
    unsigned int first = 0;
    unsigned int second = 0;
    if (contains(predicate, "<="))
        second = wrapping_sum(as_unsigned(number_after(predicate, "<=", 1)), 1);
    else if (contains(predicate, "<"))
        second = as_unsigned(number_after(predicate, "<", 1));
    if (contains(predicate, ">=")) {
        first = as_unsigned(number_after(predicate, ">=", 1));
        second = count;
    } else if (contains(predicate, ">")) {
        first = wrapping_sum(as_unsigned(number_after(predicate, ">", 1)), 1);
        second = count;
    }
    if (contains(predicate, "=")) {
        first = as_unsigned(number_after(predicate, "=", 1));
        second = wrapping_sum(first, 1);
    }
    return {first, second};
}

std::pair<std::string, std::string> SlowEngine::get_attribute_pair(std::string query) const {
    const std::deque<std::string> fields = split(query, "=");
    if (fields.size() > 2)
        throw std::invalid_argument(at_most_one_equals_sign);
    if (fields.size() == 2)
        return {fields[0], without_quotes(fields[1])};
    return {fields[0], ""};
}

NodeList SlowEngine::get_node_containing_attribute(std::string query, NodeList nodes) const {
    const auto [name, value] = get_attribute_pair(query);
    NodeList kept;
    for (Node* node : nodes) {
        auto* const element = dynamic_cast<Element*>(node);
        if (element == nullptr)
            continue;
        Attribute* const attribute = element->get_attribute(name);
        if (attribute == nullptr)
            continue;
        if (value.empty() || attribute->get_value() == value)
            kept.push_back(element);
    }
    return kept;
}

NodeList SlowEngine::get_node_containing_child_value(std::string query, NodeList nodes) const {
    const std::deque<std::string> fields = split(query, "=");
    if (fields.size() != 2)
        throw std::invalid_argument(one_equals_sign);
    NodeList kept;
    for (Node* node : nodes) {
        if (contains_child_value(node, fields[0], without_quotes(fields[1])))
            kept.push_back(node);
    }
    return kept;
}

bool SlowEngine::contains_child_value(Node* node, std::string child_name, std::string value) const {
    if (node == nullptr)
        return false;
    for (Node* child : node->get_children()) {
        auto* const element = dynamic_cast<Element*>(child);
        if (child->get_name() == child_name && element != nullptr && element->has_child_text() &&
            element->get_child_text()->get_content() == value)
            return true;
    }
    return false;
}

bool SlowEngine::attribute_matches_node(Element* element, std::string predicate) const {
    if (element == nullptr)
        return false;
    if (predicate.substr(0, 1) != "@") {
        if (element->get_attribute("item") != nullptr)
            return element->get_attribute_value("item") == predicate;
        return predicate == "1";
    }
    const std::size_t equals = predicate.find('=');
    if (equals == std::string::npos)
        return element->get_attribute(predicate.substr(1)) != nullptr;
    // With "=" right after "@" the length, unsigned, wraps around and the name is the whole rest.
    const std::size_t length = equals == 1 ? std::string::npos : equals - 2;
    Attribute* const attribute = element->get_attribute(predicate.substr(1, length));
    return attribute != nullptr && attribute->get_value() == predicate.substr(equals + 1);
}

NodeSet slow_find_exact_match(Node* node, const std::string& path) {
    const std::locale locale;
    SlowEngine engine([locale](const std::string& name, const std::string& name_test) {
        return boost::algorithm::iequals(name, name_test, locale);
    });
    return engine.find(node, path);
}

NodeSet slow_find_substring_match(Node* node, const std::string& path) {
    const std::locale locale;
    SlowEngine engine([locale](const std::string& name, const std::string& name_test) {
        return boost::algorithm::istarts_with(name, name_test, locale);
    });
    return engine.find(node, path);
}

}  // namespace quxml_test
