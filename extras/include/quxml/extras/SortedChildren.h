// SPDX-License-Identifier: MIT
#ifndef QUXML_EXTRAS_SORTED_CHILDREN_H
#define QUXML_EXTRAS_SORTED_CHILDREN_H

#include <quxml/Element.h>

#include <memory>
#include <string>

namespace quxml {
namespace extras {

/// Adds children to an element that is kept sorted without a walk for each of them:
///
///     SortedChildren adder(users);
///     for (const User& user : all_users)
///         adder.add("user", user.id)->add_child_text(user.name);
///
/// Each call of `add` does what the same call of `Node::add_child` would do, so the tree is the same, in any
/// order of additions, with any items (absent, empty, numbers, texts, both mixed), and whatever children there
/// are already. To an element that is not kept sorted children are appended, as `add_child` does.
///
/// While the adder lives, nobody else may add children to the element, remove or move any, or change their
/// names or items. What else is done with them, and whatever is done below them, does no harm. Builds without
/// `NDEBUG` check the number of the children at each call.
///
/// \par Threads
/// As `Node`, together with the element.
/// \par Memory
/// About 200 bytes for each child with an item, and for each name, while the adder lives.
class SortedChildren {
public:
    /// Looks at all children that are there.
    /// \param parent borrowed; has to live as long as the adder.
    /// \throws std::bad_alloc
    /// \par Complexity
    /// n log n for n children.
    explicit SortedChildren(Element& parent);

    SortedChildren(const SortedChildren&) = delete;
    SortedChildren& operator=(const SortedChildren&) = delete;

    ~SortedChildren();

    /// As `Node::add_child(name)`.
    /// \return the new child, borrowed.
    /// \throws std::bad_alloc nothing has been added.
    /// \par Complexity
    /// log n for n children; constant if the element is not kept sorted.
    Element* add(const std::string& name);

    /// As `Node::add_child(name, item)`.
    /// \throws std::out_of_range ("stoi") exactly when `Node::add_child` would throw it; nothing has been
    ///     added. Deliberate: the child is freed, while `Node::add_child` does not free it.
    ///     Test: SortedChildrenMemory.of_a_child_whose_item_is_refused_is_freed_which_is_wanted.
    Element* add(const std::string& name, const std::string& item);

    /// As above with the item in decimal.
    Element* add(const std::string& name, int item);

private:
    class Index;

    std::unique_ptr<Index> index;
};

}  // namespace extras
}  // namespace quxml

#endif
