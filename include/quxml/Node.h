// SPDX-License-Identifier: MIT
#ifndef QUXML_NODE_H
#define QUXML_NODE_H

#include <cstddef>
#include <list>
#include <set>
#include <string>

#include "export.h"

namespace quxml {

class Attribute;
class Element;
class Node;
class TextNode;

/// Nodes in child order. The pointers are borrowed.
using NodeList = std::list<Node*>;

/// The result of a query: each node once, in the order of the pointer values, which is not document order.
/// The pointers are borrowed.
using NodeSet = std::set<Node*>;

/// The base of everything in a tree: a name, a parent, owned children and the links between siblings.
///
/// Ownership is a tree: a node owns its children and destroys them with itself; `parent` and the sibling
/// links are borrowed. Every node pointer that the library hands out is borrowed and valid until the node is
/// destroyed: by `remove_child` on its parent, with its parent, or with its document.
///
/// Children are created by `add_child`, `Element::add_child_text` and copies. Those operations hand this node
/// on as the child's parent element, so this node must be an `Element`; calling them on an `Attribute` or a
/// `TextNode` is an error of the caller that nothing detects.
///
/// \par Threads
/// Trees that share no node may be used on different threads at once; one tree may not.
/// \par Memory
/// What needs memory may throw `std::bad_alloc`. Unless its description says otherwise, nothing has changed
/// then.
/// \par Depth
/// No operation of the library recurses with the depth of a tree. Only nested nodes of derived classes that
/// are written or copied take one call each, since each is asked to write or copy itself.
/// \par Derived classes
/// A destructor of a derived class still finds the node's own children. It must not look at parent or
/// siblings: those pointers may be null or lead anywhere, to the node itself included. Compile derived classes
/// with run-time type information: with `-fno-rtti` the library crashes when it asks what kind of node it meets,
/// which queries, sorting, formatted writing and additions to sorted children may do.
class QUXML_EXPORT Node {
public:
    /// A free-standing node: empty name, no parent, no siblings, no children, not kept sorted.
    Node();

    /// A node with an empty name below `parent`, from which it takes `keep_sorted`. It is not linked into the
    /// parent: that is the work of `add_new_node` or `insert_node`.
    /// \param parent borrowed, not null (it is read).
    explicit Node(Element* parent);

    /// A free-standing node called `name`, not kept sorted.
    explicit Node(const std::string& name);

    /// A node with the three values as given, not linked into `parent`.
    /// \param name copied.
    /// \param parent borrowed; may be null.
    /// \param keep_sorted whether `add_new_node` puts children at their sorted place instead of at the end.
    Node(const std::string& name, Element* parent, bool keep_sorted);

    /// Nodes cannot be copied by value; see `import_node`.
    Node(const Node&) = delete;

    /// Nodes cannot be assigned.
    Node& operator=(const Node&) = delete;

    /// Destroys all children, and everything below them, parents before their children, first to last. The
    /// node does not unlink itself: destroy a node that is still a child with its parent's `remove_child`
    /// only.
    virtual ~Node();

    /// Appends this node as XML text to `out`, which is never read, cleared or truncated.
    /// \param out the text so far.
    /// \param indent the depth: negative for compact text, n >= 0 for formatted text at nesting level n, two
    ///     spaces per level.
    /// \throws std::bad_alloc `out` then keeps what had been appended.
    virtual void write_to_string(std::string& out, int indent) const = 0;

    /// Creates a copy of this node that is already attached to `parent`.
    /// \param deep whether an element is copied with its attributes and everything below it, or its name
    ///     alone.
    /// \param parent takes ownership of the copy; not null.
    /// \return the copy, borrowed.
    virtual Node* get_deep_copy_of_node(bool deep, Element* parent) const = 0;

    /// A copy of the name; empty for text.
    std::string get_name() const;

    /// Assigns the name and does nothing else: a parent that is kept sorted is not sorted again.
    void set_name(const std::string& name);

    /// The element that owns this node; null for a root and for a free-standing node. Borrowed.
    Element* get_parent() const;

    /// The child before this one in the parent, or null. Borrowed.
    Node* get_previous_sibling() const;

    /// The child after this one in the parent, or null. Borrowed.
    Node* get_next_sibling() const;

    /// A snapshot of the children in order: a new list of the same borrowed pointers. Changing the tree does
    /// not change the snapshot, but the pointer of a child that has been removed dangles in it.
    /// \par Complexity
    /// Linear in the number of children, one allocation for each.
    NodeList get_children() const;

    /// The first child whose name is exactly `name` (bytes, case-sensitive), or null. Borrowed. Text has the
    /// empty name, so `get_child("")` finds the first text unless an element without a name precedes it.
    /// \par Complexity
    /// Linear in the number of children; allocates nothing.
    Node* get_child(const std::string& name) const;

    /// Creates an element called `name` and links it with `add_new_node`.
    /// \return the new child, borrowed; this node owns it.
    /// \throws std::bad_alloc nothing has been added.
    Element* add_child(const std::string& name);

    /// As above, with the attribute "item" set to `item` before the child is linked, so that a node that is
    /// kept sorted places it by its item.
    /// \throws std::out_of_range ("stoi") if this node is kept sorted and the search for the place compares
    ///     an item that is a number beyond the range of `int`. The new child is then neither linked nor
    ///     freed.
    Element* add_child(const std::string& name, const std::string& item);

    /// As above with the item in decimal: 7 gives "7", -3 gives "-3".
    Element* add_child(const std::string& name, int item);

    /// Links a node: as the last child or, if this node is kept sorted, before the first child that does not
    /// sort before it (see `sort_children` for the order). Among equals the new node goes first; a new
    /// element without an item goes after all its namesakes.
    /// \param node constructed with this node as its parent (`parent` is not set here) and not linked
    ///     anywhere. This node takes ownership; if an exception leaves, the caller keeps it.
    /// \throws std::out_of_range ("stoi") as for `add_child`; nothing has been linked.
    /// \par Complexity
    /// constant, or linear in the number of children if this node is kept sorted.
    void add_new_node(Node* node);

    /// Links a node immediately before `position`, whether or not this node is kept sorted.
    /// \param node as for `add_new_node`.
    /// \param position in this node's own list of children (a derived class can name one), or its end; not looked
    ///     at if there are no children.
    /// \throws std::bad_alloc nothing has been linked; the caller keeps the node.
    void insert_node(Node* node, NodeList::iterator position);

    /// Unlinks `child` and destroys it with everything below it.
    /// \param child a child of this node. Membership is not checked, and removing any other node leaves a
    ///     tree that cannot be used: the node is destroyed while its real parent still lists it.
    /// \throws std::invalid_argument
    ///     "Can not remove nullptr pointer from Node" if `child` is null, else
    ///     "Can not remove when Node has no children"; the tree is unchanged.
    /// \par Invalidates
    /// every pointer to the child or into its subtree, nothing else.
    /// \par Complexity
    /// the size of the subtree; in addition linear in the number of children unless `child` is the first or
    /// the last.
    void remove_child(Node* child);

    /// Makes `child` the first child; does nothing if it has no previous sibling. No pointer is invalidated.
    /// \param child a child of this node, not null; membership is not checked.
    /// \par Complexity
    /// linear in the number of children; constant for the first and the last child.
    void set_child_first(Node* child);

    /// Copies `node` into this element; see `get_deep_copy_of_node`.
    /// \param node borrowed, not null. Neither this node nor one of its ancestors: copying a node into itself
    ///     does not end.
    /// \param deep as for `get_deep_copy_of_node`.
    /// \return the copy, borrowed; or, for an attribute that this element already has, that attribute with
    ///     its new value.
    /// \throws std::bad_alloc what had been copied until then stays in this element; so it does after an
    ///     exception of a node of a derived class, which copies itself.
    Node* import_node(const Node* node, bool deep);

    /// Sorts the children, whether or not this node is kept sorted.
    ///
    /// The order: by name, bytes as unsigned; text, whose name is empty, comes first. Namesakes that are both
    /// elements are ordered by the attribute "item": as numbers if both begin with one (`std::stoi`), otherwise
    /// as text. The sort is stable for equal items.
    ///
    /// Deliberate: an element without an item counts as going before each namesake and each namesake as going
    /// before it. A group of which no element has an item is therefore reversed by each call. Results for
    /// such groups are those of libstdc++'s `std::list::sort`. A single element without an item can leave its
    /// namesakes out of order.
    /// Test: SortChildren.reverses_namesakes_without_items_however_many_they_are_which_is_wanted.
    /// \throws std::out_of_range ("stoi") if a number beyond the range of `int` is compared. All children are
    ///     still there, in an unspecified order, and their sibling links are as before.
    /// \par Complexity
    /// n log n comparisons for n children, and memory for n small records while it runs; without that memory
    /// it produces the same order more slowly.
    void sort_children();

    /// `sort_children` on this node, then on everything below it, parents first.
    /// \throws std::out_of_range as `sort_children`; the nodes that had been sorted stay sorted.
    /// \throws std::bad_alloc likewise.
    void sort_children_recursively();

    /// The leading part of `path` that ends at this node, spelled as the tree spells it, for example
    /// "/library/shelf" for a shelf and the path "/library/shelf/book".
    ///
    /// Climbs from this node towards the root and matches names, ignoring case under the global locale,
    /// against the components of `path` from the last one backwards; a component that does not match is
    /// skipped.
    /// \return the chain of matched names; empty if nothing matched, if the chain does not begin with the
    ///     path's first name, or if it equals all of `path`.
    ///
    /// Deliberate: the last comparison is with `path` as it was passed. A path without a leading "/" never
    /// equals the chain, so for such a path the node at its very end gets the whole path back.
    /// Test: Rows/Subpath.is/the_whole_path_without_its_slash_wanted.
    /// \par Complexity
    /// linear in the length of the path.
    std::string get_subpath_for(const std::string& path);

    /// The nodes that a path selects, starting at this node; names match if they are equal, ignoring case
    /// under the global locale. `XPathHelper` describes the path language.
    /// \return borrowed pointers; empty for an empty path.
    /// \throws std::invalid_argument, std::out_of_range if a predicate that is reached cannot be read (see
    ///     `XPathHelper`); the tree is never changed.
    /// \par Complexity
    /// For each step linear in the children of the nodes that the step before selected, and what its predicates
    /// cost; for a search linear in the nodes below; for m results m log m.
    NodeSet find_exact_match(const std::string& path);

    /// As `find_exact_match`, but a name test matches every name that begins with it, ignoring case.
    ///
    /// Deliberate: despite the operation's name this is a prefix match; "oo" does not find "book".
    /// Test: Names/PrefixMatch.selects/it_is_deliberate_that_a_part_within_a_name_does_not_match.
    NodeSet find_substring_match(const std::string& path);

protected:
    /// The owned children, in order.
    NodeList children;

    /// Whether `add_new_node` puts children at their sorted place; fixed at construction.
    bool keep_sorted;

    /// Empty for text.
    std::string name;

    /// The element that owns this node, or null. Borrowed.
    Element* parent;

    /// The child before this one in the parent's list, or null. Borrowed.
    Node* previous_sibling;

    /// The child after this one in the parent's list, or null. Borrowed.
    Node* next_sibling;

private:
    friend struct NodeAccess;
    friend class Attribute;
    friend class Element;
    friend class TextNode;

    /// As the last of the constructors above, from a name that is not a string yet.
    QUXML_HIDDEN Node(const char* name, std::size_t length, Element* parent, bool keep_sorted);
};

}  // namespace quxml

#endif
