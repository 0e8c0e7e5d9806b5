// SPDX-License-Identifier: MIT

// Reads every file of the W3C's XML conformance suite and compares with libxml2. Prints what was found and a
// table of counts; fails on any finding, and if the suite is not whole.

#include <cstdlib>
#include <exception>
#include <iomanip>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>

#include "conformance/checks.h"
#include "conformance/suite.h"
#include "reader/libxml2_oracle.h"
#include "support/read_file.h"

namespace {

using quxml_conformance::Suite;
using quxml_conformance::SuiteFile;
using quxml_conformance::Verdict;

// What version 1.2.0 of the package has.
constexpr std::size_t known_files = 3387;
constexpr std::size_t known_tests = 2585;

// ---- Nothing outside a text may be asked for ----

int loads = 0;

extern "C" xmlParserInput* quxml_conformance_count_load(const char* /*name*/, const char* /*public_name*/,
                                                        xmlParserCtxt* /*parser*/) {
    ++loads;
    return nullptr;
}

int take_loads() {
    const int taken = loads;
    loads = 0;
    return taken;
}

/// Counts from now on what is loaded, and makes sure that it would be noticed.
bool watch_loads() {
    const quxml_test::SilentLibxml2 silence;
    const std::string text = "<!DOCTYPE a SYSTEM 'a.dtd'><a/>";
    xmlSetExternalEntityLoader(quxml_conformance_count_load);
    xmlFreeDoc(xmlReadMemory(text.data(), static_cast<int>(text.size()), "", nullptr, XML_PARSE_DTDLOAD));
    return take_loads() == 1;
}

// ---- The table ----

struct Counts {
    int files = 0;
    int accepted = 0;
    int carried = 0;
    int agreeing = 0;
};

void add(Counts& counts, const Verdict& verdict) {
    ++counts.files;
    counts.accepted += verdict.is_accepted ? 1 : 0;
    counts.carried += verdict.is_carried ? 1 : 0;
    counts.agreeing += verdict.findings.empty() ? 1 : 0;
}

void print_row(const std::string& category, const Counts& counts) {
    std::cout << std::left << std::setw(18) << category << std::right;
    for (const int count :
         {counts.files, counts.accepted, counts.files - counts.accepted, counts.carried, counts.agreeing})
        std::cout << std::setw(11) << count;
    std::cout << '\n';
}

void print_table(const std::map<std::string, Counts>& rows) {
    std::cout << std::left << std::setw(18) << "category" << std::right;
    for (const char* heading : {"files", "accepted", "refused", "read back", "agreeing"})
        std::cout << std::setw(11) << heading;
    std::cout << '\n';
    for (const auto& [category, counts] : rows)
        print_row(category, counts);
}

// ---- The run ----

Verdict check_file(const SuiteFile& file) {
    Verdict verdict = quxml_conformance::check_text(quxml_test::read_file(file.path));
    if (take_loads() > 0)
        verdict.findings.emplace_back("something outside the text was asked for");
    for (const std::string& finding : verdict.findings)
        std::cout << file.path << ": " << finding << '\n';
    return verdict;
}

bool is_whole(const Suite& suite) {
    std::cout << suite.tests << " tests described, " << suite.files.size() << " files; known: " << known_tests
              << " and " << known_files << '\n';
    return suite.tests >= known_tests && suite.files.size() >= known_files;
}

bool check_suite(const std::string& folder) {
    const Suite suite = quxml_conformance::read_suite(folder);
    if (!watch_loads())
        throw std::runtime_error("loading is not noticed");
    std::map<std::string, Counts> rows;
    Counts total;
    for (const SuiteFile& file : suite.files) {
        const Verdict verdict = check_file(file);
        add(rows[file.contributor + " " + file.kind], verdict);
        add(total, verdict);
    }
    print_table(rows);
    print_row("all", total);
    return is_whole(suite) && total.agreeing == total.files;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc != 2)
            throw std::runtime_error("one argument, the suite's folder xmlconf");
        return check_suite(argv[1]) ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& error) {
        std::cerr << "quxml_conformance: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
