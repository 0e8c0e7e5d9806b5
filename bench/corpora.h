// SPDX-License-Identifier: MIT
#ifndef QUXML_BENCH_CORPORA_H
#define QUXML_BENCH_CORPORA_H

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// A text to work on, made when it is needed.
struct Corpus {
    std::string name;
    std::function<std::string()> text;
};

/// Real files of Debian packages, then generated texts.
std::vector<Corpus> corpora();

/// The same texts with nothing in them that the libraries keep, drop or write differently: no comments, no
/// mixed content, no blank text, no declared namespaces, and dots for what an attribute's value must escape.
std::vector<Corpus> canonical_corpora();

/// About 2 KB, the configuration of a small device.
std::string configuration();

/// "group"s of 25 "entry"s each, which have attributes and children with text: about 100 elements, and 3.5 KB of
/// text, in each group.
std::string groups(int group_count);

/// 100,000 siblings called "entry", each with an item of its own, in no particular order.
std::string siblings();

/// The numbers from 1 to `count`, in no particular order.
std::vector<unsigned> shuffled_numbers(unsigned count);

/// A root with n children whose names differ; the last is called "last".
std::string different_siblings(std::size_t n);

/// A root with n attributes; the last is called "last".
std::string attributes(std::size_t n);

}  // namespace bench

#endif
