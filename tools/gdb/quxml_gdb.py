# SPDX-License-Identifier: MIT
"""Shows quxml's trees in gdb: printers for nodes and documents, and the commands quxml-tree and quxml-path.

gdb loads this file by itself for an installed shared library; otherwise say `source quxml_gdb.py`.

No function of the program is called, and no debug information of the library is asked for: the fields are read from
memory, where the library's ABI puts them, and the class of a node from its run-time type information. So everything
works on core files as well, of 32-bit machines too, and with a library and a program that have been stripped. Nothing
recurses with the depth of a tree. What can not be read shows as a message in its place.
"""

import codecs
import re

import gdb
import gdb.printing

# The classes of nodes, by their names in run-time type information.
KINDS = {b"N5quxml7ElementE\0": "Element", b"N5quxml9AttributeE\0": "Attribute", b"N5quxml8TextNodeE\0": "TextNode"}
NODES = ("quxml::Node", "quxml::Element", "quxml::Attribute", "quxml::TextNode")
ESCAPES = {ord("\\"): "\\\\", ord('"'): '\\"', ord("\n"): "\\n", ord("\r"): "\\r", ord("\t"): "\\t"}
ESCAPES.update({code: f"\\x{code:02x}" for code in range(32) if code not in ESCAPES})


# Memory.


def word_type():
    """The type of what is as wide as a pointer."""
    return gdb.lookup_type("void").pointer()


def word_size():
    return word_type().sizeof


def read_word(address):
    return int(gdb.Value(address).cast(word_type().pointer()).dereference())


def read_bytes(address, size):
    return bytes(gdb.selected_inferior().read_memory(address, size)) if size else b""


def read_number(address):
    """An unsigned int."""
    return int(gdb.Value(address).cast(gdb.lookup_type("unsigned int").pointer()).dereference())


class String:
    """A std::string of libstdc++: the address of the text, its length, and 16 bytes."""

    def __init__(self, address):
        self.text = read_word(address)
        self.length = read_word(address + word_size())

    def whole(self):
        return read_bytes(self.text, self.length)

    def escaped(self):
        """The text on one line; cut, with "..." after it, where `set print elements` says."""
        size = min(self.length, limit_of_print() or self.length)
        decoder = codecs.getincrementaldecoder("utf-8")("backslashreplace")
        text = decoder.decode(read_bytes(self.text, size), final=size == self.length)
        return text.translate(ESCAPES) + ("..." if size < self.length else "")


class List:
    """A std::list of pointers: the first entry, the last, and their number; an entry is two links and the pointer."""

    def __init__(self, address):
        self.first = read_word(address)
        self.size = read_word(address + 2 * word_size())

    def __iter__(self):
        """The pointers, no more of them than are counted, so that a damaged list ends."""
        entry = self.first
        for _ in range(self.size):
            yield read_word(entry + 2 * word_size())
            entry = read_word(entry)


def limit_of_print():
    """What `set print elements` says, None for no limit."""
    return gdb.parameter("print elements") or None


# Nodes.


class Node:
    """A node at an address. Its fields are read when they are asked for."""

    def __init__(self, address):
        self.address = address

    def field(self, words, size_of_strings=0):
        return self.address + words * word_size() + size_of_strings

    def kind(self):
        """Which of KINDS it is, classes derived from them included; None if it is none."""
        types = [read_word(read_word(self.address) - word_size())]
        for type_info in types:  # which grows by the bases
            for name, kind in KINDS.items():
                if is_called(type_info, name):
                    return kind
            if len(types) < 64:
                types += base_types(type_info)
        return None

    def is_node(self):
        try:
            return self.kind() is not None
        except gdb.MemoryError:
            return False

    def children(self):
        return List(self.field(1))

    def name(self):
        return String(self.field(5))

    def parent(self):
        return read_word(self.field(7, 16))

    # What the derived class adds.

    def attributes(self):
        return List(self.field(10, 16))

    def text(self):
        return String(self.field(10, 16))

    def describe(self):
        """The node in one line."""
        try:
            return {"Element": self.describe_element, "Attribute": self.describe_attribute,
                    "TextNode": self.describe_text}.get(self.kind(), lambda: "(not a node)")()
        except gdb.MemoryError:
            return "(cannot be read)"

    def describe_element(self):
        words = [self.name().escaped()]
        for number, attribute in enumerate(self.attributes()):
            if number == limit_of_print():
                words.append("...")
                break
            words.append(Node(attribute).describe())
        return "<" + " ".join(words) + (">" if self.children().size else "/>")

    def describe_attribute(self):
        return f'{self.name().escaped()}="{self.text().escaped()}"'

    def describe_text(self):
        return f'"{self.text().escaped()}"'

    def readable_children(self):
        """The children, as far as they can be read."""
        try:
            if self.is_node():
                yield from map(Node, self.children())
        except gdb.MemoryError:
            return


def is_called(type_info, name):
    try:
        return read_bytes(read_word(type_info + word_size()), len(name)) == name
    except gdb.MemoryError:
        return False


def base_types(type_info):
    """The type information of a class's bases; a word that leads anywhere for a class without any."""
    after_name = type_info + 2 * word_size()
    try:
        flags, count = read_number(after_name), read_number(after_name + 4)
        # Several bases: two numbers, and two words for each base. One base: its address, which no such small number is.
        if flags < 4 and 0 < count < 64:
            return [read_word(after_name + 8 + 2 * word_size() * number) for number in range(count)]
        return [read_word(after_name)]
    except gdb.MemoryError:
        return []


# Printers.


def show_pointer(address):
    return f"0x{address:x}" + (f" {Node(address).describe()}" if address else "")


def make_pointer(address):
    """A pointer to the node there, to be shown and looked into; its text, if gdb does not know the class."""
    try:
        return gdb.Value(address).cast(gdb.lookup_type("quxml::Node").pointer())
    except gdb.error:
        return show_pointer(address)


class NodePrinter:
    """A node, with its children."""

    def __init__(self, value):
        self.node = Node(int(value.address))

    def to_string(self):
        return self.node.describe()

    def children(self):
        for number, child in enumerate(self.node.readable_children()):
            yield f"[{number}]", make_pointer(child.address)


class PointerPrinter:
    """A pointer to a node."""

    def __init__(self, value):
        self.address = int(value)

    def to_string(self):
        return show_pointer(self.address)


class DocumentPrinter:
    """A document, with its root."""

    def __init__(self, value):
        self.root = read_word(int(value.address))
        self.is_sorted = read_bytes(int(value.address) + word_size(), 1) != b"\0"

    def to_string(self):
        return ("document" if self.root else "document without a root") + (", kept sorted" if self.is_sorted else "")

    def children(self):
        if self.root:
            yield "root", make_pointer(self.root)


class Printers(gdb.printing.PrettyPrinter):
    """Finds the printer for a value: of the library's classes, and of pointers to nodes."""

    def __init__(self):
        super().__init__("quxml", [])

    def __call__(self, value):
        value = without_reference(value)
        if value.is_optimized_out:
            return None
        if is_pointer(value):
            return PointerPrinter(value) if name_of(value.type.strip_typedefs().target()) in NODES else None
        if value.address is None:
            return None
        if name_of(value.type) in NODES:
            return NodePrinter(value)
        return DocumentPrinter(value) if name_of(value.type) == "quxml::Document" else None


def without_reference(value):
    is_reference = value.type.strip_typedefs().code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF)
    return value.referenced_value() if is_reference else value


def is_pointer(value):
    return value.type.strip_typedefs().code == gdb.TYPE_CODE_PTR


def name_of(value_type):
    return value_type.strip_typedefs().unqualified().name or ""


# Commands.


def evaluate_node(expression):
    """The node that an expression means: a node, a document, what points to one, or an address as a number."""
    try:
        node = Node(address_of(without_reference(gdb.parse_and_eval(expression))))
    except gdb.error as error:
        raise gdb.GdbError(str(error))
    if node.address == 0:
        raise gdb.GdbError(f"{expression}: there is no node")
    if not node.is_node():
        raise gdb.GdbError(f"{expression}: not a node")
    return node


def address_of(value):
    """Where the node is that a value means, 0 for none."""
    if name_of(value.type).startswith(("std::shared_ptr<", "std::__shared_ptr<")):
        value = value["_M_ptr"]
    named = value.type.strip_typedefs().target() if is_pointer(value) else value.type
    is_address = is_pointer(value) or value.type.strip_typedefs().code == gdb.TYPE_CODE_INT
    address = int(value if is_address else value.address or 0)
    return read_word(address) if address and name_of(named) == "quxml::Document" else address


class Tree(gdb.Command):
    """Prints a node and what is below it, a line for each node.

    quxml-tree NODE [DEPTH]

    NODE is an expression: a node, a document, a pointer to one, or the address of a node as a number. DEPTH, a decimal
    number after a blank at the end, is how many levels below the node are printed; all of them without it. "set print
    elements" limits the length of names, values and texts and the number of attributes."""

    def __init__(self):
        super().__init__("quxml-tree", gdb.COMMAND_DATA, gdb.COMPLETE_EXPRESSION)

    def invoke(self, argument, from_tty):
        expression, depth = re.fullmatch(r"(.*?)(?:\s+(\d+))?\s*", argument, re.DOTALL).groups()
        if not expression:
            raise gdb.GdbError("usage: quxml-tree NODE [DEPTH]")
        self.print_tree(evaluate_node(expression), None if depth is None else int(depth))

    def print_tree(self, node, depth):
        levels = [iter([node])]
        while levels:
            child = next(levels[-1], None)
            if child is None:
                levels.pop()
                continue
            is_cut = depth is not None and len(levels) > depth
            self.print_line(child, len(levels) - 1, is_cut)
            if not is_cut:
                levels.append(child.readable_children())

    def print_line(self, node, level, is_cut):
        hidden = sum(1 for _ in node.readable_children()) if is_cut else 0
        note = f" ({hidden} {'child' if hidden == 1 else 'children'})" if hidden else ""
        gdb.write("  " * level + node.describe() + note + "\n")


class Path(gdb.Command):
    """Prints the path that selects a node and no other.

    quxml-path NODE

    NODE is an expression, as for quxml-tree. find_exact_match, called on the topmost node with that path, finds the
    node; only what ends with "/@NAME", which leads to an attribute, is no query."""

    def __init__(self):
        super().__init__("quxml-path", gdb.COMMAND_DATA, gdb.COMPLETE_EXPRESSION)

    def invoke(self, argument, from_tty):
        if not argument.strip():
            raise gdb.GdbError("usage: quxml-path NODE")
        node = evaluate_node(argument.strip())
        steps = [step_to(node)]
        while node.parent():
            node = Node(node.parent())
            if not node.is_node():
                raise gdb.GdbError("a parent is not a node")
            steps.append(step_to(node))
        gdb.write("/" + "/".join(reversed(steps)) + "\n")


def step_to(node):
    """The step of a path that leads to the node from its parent: its name, and its position if there are more such."""
    name = node.name().whole()
    spelling = name.decode("utf-8", "backslashreplace")
    if node.kind() == "Attribute":
        return "@" + spelling
    test = spelling if can_be_tested(name) else "*"
    if not node.parent():
        return test
    siblings = Node(node.parent()).readable_children()
    passing = [child.address for child in siblings if test == "*" or child.name().whole().lower() == name.lower()]
    if node.address not in passing:
        raise gdb.GdbError("a node is not among the children of its parent")
    return test if len(passing) == 1 else f"{test}[position()={passing.index(node.address) + 1}]"


def can_be_tested(name):
    """Whether a path can spell the name."""
    return re.fullmatch(rb"[^][/*\x00-\x20]([^][/*]*[^][/*\x00-\x20])?", name) is not None


gdb.printing.register_pretty_printer(gdb.current_objfile(), Printers(), replace=True)
Tree()
Path()
