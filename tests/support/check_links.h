// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_SUPPORT_CHECK_LINKS_H
#define QUXML_TESTS_SUPPORT_CHECK_LINKS_H

#include <gtest/gtest.h>

#include "quxml/Node.h"

namespace quxml_test {

/// Success if, for `root` and everything below it, the sibling links visit exactly the children in both
/// directions and end in null, every child and attribute names its owner as its parent, attributes have
/// neither siblings nor children, and no two attributes of an element share a name. The parent and siblings
/// of `root` itself are not looked at. Works for trees of any depth.
::testing::AssertionResult links_agree(const quxml::Node* root);

}  // namespace quxml_test

#endif
