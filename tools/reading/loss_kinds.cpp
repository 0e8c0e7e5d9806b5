// SPDX-License-Identifier: MIT
#include "reading/loss_kinds.h"

#include <array>

namespace tool {

namespace {

struct Name {
    const char* one;
    const char* many;
};

/// In the order of LossKind.
constexpr std::array<Name, number_of_loss_kinds> kind_names{{
    {"encoding", "encodings"},
    {"byte-order mark", "byte-order marks"},
    {"XML version", "XML versions"},
    {"standalone declaration", "standalone declarations"},
    {"line ends", "line ends"},
    {"DOCTYPE", "DOCTYPEs"},
    {"comment", "comments"},
    {"processing instruction", "processing instructions"},
    {"CDATA section", "CDATA sections"},
    {"text beside other content", "texts beside other content"},
    {"white space", "white spaces"},
    {"entity reference", "entity references"},
    {"prefix", "prefixes"},
    {"namespace declaration", "namespace declarations"},
    {"replaced attribute", "replaced attributes"},
    {"carriage return", "carriage returns"},
    {"attribute value that needs escapes", "attribute values that need escapes"},
    {"spelling", "spellings"},
}};

Name find_name(LossKind kind) {
    return kind_names.at(static_cast<std::size_t>(kind));
}

}  // namespace

bool is_harmless(LossKind kind) {
    return kind == LossKind::escape || kind == LossKind::carriage_return || kind == LossKind::spelling;
}

bool is_content(LossKind kind) {
    return kind == LossKind::text || kind == LossKind::cdata || kind == LossKind::entity ||
           kind == LossKind::replaced_attribute;
}

std::string get_name(LossKind kind) {
    return find_name(kind).one;
}

/// Line ends are listed once, however many there are.
std::string count_in_words(LossKind kind, std::size_t count) {
    const Name name = find_name(kind);
    if (kind == LossKind::line_ends)
        return name.many;
    return std::to_string(count) + ' ' + (count == 1 ? name.one : name.many);
}

}  // namespace tool
