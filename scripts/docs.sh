# Builds the guide and the reference as one site, build/docs/html, with the playground if that was built; fails on any warning.
# SPDX-License-Identifier: MIT
refuse_arguments "$@"
need doxygen doxygen-awesome-css python3
QUXML_THEME=/usr/share/doxygen-awesome-css
QUXML_VERSION=$(sed -n 's/^#define QUXML_VERSION_[A-Z]* //p' include/quxml/version.h | paste --serial --delimiters .)
export QUXML_THEME QUXML_VERSION
[ ! -e build/playground/index.html ] || export QUXML_PLAYGROUND=yes
rm -rf build/docs
quietly doxygen docs/Doxyfile
[ ! -e build/playground/index.html ] || cp -r build/playground build/docs/html/playground
! grep --extended-regexp --only-matching 'href="[^"]*\.md[^"]*"' build/docs/html/*.html || fail "Doxygen has not resolved these links"
echo "build/docs/html/index.html has $(find build/docs/html -name '*.html' | wc --lines) pages"
