// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_TREES_H
#define QUXML_EXTRAS_TREES_H

#include <quxml/Element.h>
#include <quxml/Node.h>

#include <cstddef>
#include <string>

namespace quxml {
namespace extras {

/// Whether two trees are the same: names, attributes with their values, texts, and the order of all of them.
/// Such trees are written as the same text. Whether nodes are kept sorted is not looked at; a text is compared
/// by its content, and a node that is neither an element nor a text by its class and its name.
/// \par Complexity
/// Linear in the size of the smaller tree; the stack does not grow with the depth.
bool is_same_tree(const Node& one, const Node& other);

/// Lays `from` over `onto`, for example a user's settings over the defaults. Nothing of `onto` is removed but
/// texts in favour of others:
///
/// - Attributes of `from` are set in `onto`.
/// - If `from` has text, its first text becomes the only text of `onto`.
/// - A child element of `from` is laid over the child of `onto` that has the same name and the same value of
///   the attribute `key`, or that like it has no such attribute: the first over the first such child, the second
///   over the second. Where there is none left, the child is copied into `onto` (`Node::import_node`).
///
/// \param onto what is changed.
/// \param from not part of the tree that `onto` belongs to.
/// \param key the attribute that tells namesakes apart.
/// \throws std::bad_alloc what had been merged until then stays.
/// \throws std::out_of_range see `Node::get_deep_copy_of_node`.
/// \par Complexity
/// m log n for m nodes of `from` and n children of one element of `onto`; the stack does not grow with the depth.
void merge(Element& onto, const Element& from, const std::string& key = "item");

/// Moves a node, with everything below it, to the place of a new child of `parent`: last or, if that is kept
/// sorted, where `Node::add_new_node` links it. Nothing is copied, and no pointer becomes invalid. What is kept
/// sorted below the node stays so.
/// \param node a child of some element, not a root.
/// \param parent in the same tree or in another one; the node's parent, too.
/// \throws std::invalid_argument "Only a child can be moved" if the node is not a child of an element, or
///     "A node cannot be moved below itself"; nothing has changed.
/// \throws std::out_of_range as `Node::add_new_node`; nothing has changed.
/// \throws std::bad_alloc nothing has changed.
/// \par Complexity
/// Linear in the number of the node's siblings and in the depth of `parent`, and what `Node::add_new_node` takes.
void move_to(Node& node, Element& parent);

/// Removes the nodes that a path selects, starting at `start`, with everything below them. What `start` itself
/// or any node without a parent matches is not removed, but matches below it are.
/// \return how many subtrees have been removed: a match below another one goes with it and is not counted.
/// \throws std::invalid_argument, std::out_of_range if the path cannot be read, see `Node::find_exact_match`;
///     nothing has been removed.
/// \throws std::bad_alloc nothing has been removed.
/// \par Complexity
/// The query, and the number of siblings of what is removed, however many of them go.
std::size_t remove_matches(Node& start, const std::string& path);

}  // namespace extras
}  // namespace quxml

#endif
