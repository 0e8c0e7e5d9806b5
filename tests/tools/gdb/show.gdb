# What the printers and commands show; the printed text stands in show.out, with addresses as 0xADDRESS.
set print pretty on
set width 0

echo values\n
print *seen_by_gdb::seen.book
print *seen_by_gdb::seen.lang
print *seen_by_gdb::seen.title
print seen_by_gdb::seen.node
print *seen_by_gdb::seen.library
print *seen_by_gdb::seen.document._M_ptr
print seen_by_gdb::seen.sorted
print seen_by_gdb::seen.empty

echo \npointers\n
print seen_by_gdb::seen.book
print seen_by_gdb::seen.title
print seen_by_gdb::seen.nothing
print seen_by_gdb::seen.nowhere

echo \ntrees\n
quxml-tree seen_by_gdb::seen.document 1
quxml-tree seen_by_gdb::seen.odd
quxml-tree *seen_by_gdb::seen.book
quxml-tree seen_by_gdb::seen.book   0
quxml-tree seen_by_gdb::seen.sorted
quxml-tree seen_by_gdb::seen.lang 5
eval "quxml-tree %lu", seen_by_gdb::seen.title
pipe quxml-tree seen_by_gdb::seen.library | grep --count link
set print elements 3
quxml-tree seen_by_gdb::seen.odd 1
set print elements 200

echo \npaths\n
quxml-path seen_by_gdb::seen.title
quxml-path seen_by_gdb::seen.lang
quxml-path seen_by_gdb::seen.book
quxml-path seen_by_gdb::seen.library
python
for child in Node(int(gdb.parse_and_eval("seen_by_gdb::seen.odd"))).children():
    gdb.execute(f"quxml-path {child}")
end
pipe quxml-path seen_by_gdb::seen.deepest | grep --only-matching link | wc --lines

echo \nmistakes\n
python
for command in ("quxml-tree", "quxml-path", "quxml-tree seen_by_gdb::seen.empty", "quxml-tree seen_by_gdb::seen.nothing", "quxml-tree 16",
                "quxml-tree seen_by_gdb::seen.none", "quxml-tree &seen_by_gdb::seen.library", "quxml-path seen_by_gdb::seen.nowhere",
                "quxml-path seen_by_gdb::seen.alone"):
    try:
        gdb.execute(command)
    except gdb.error as error:
        print(f"{command}: {error}")
end
