// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_CONFORMANCE_SUITE_H
#define QUXML_TESTS_CONFORMANCE_SUITE_H

#include <cstddef>
#include <string>
#include <vector>

namespace quxml_conformance {

struct SuiteFile {
    std::string path;
    std::string contributor;  // the folder at the top of the suite
    std::string kind;         // "valid", "invalid", "not-wf" or "error" for tests, else "output" or "other"
};

struct Suite {
    std::vector<SuiteFile> files;  // every file there is, in the order of their paths
    std::size_t tests;             // described in the catalogs; some files serve several
};

/// Reads the catalogs of the suite and lists its files. Loads external entities: the catalogs are made of
/// them.
/// \param folder the one with the main catalog, `xmlconf.xml`.
/// \throws std::exception if a catalog cannot be read, or a file named in one is missing.
Suite read_suite(const std::string& folder);

}  // namespace quxml_conformance

#endif
