// SPDX-License-Identifier: MIT

// Covers what happens to text that cannot be read: the exception and its message, the silence on standard
// error, and the state in which libxml2 is left.

#include "quxml/DomParserError.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <exception>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include "libxml2_oracle.h"
#include "quxml/Document.h"
#include "quxml/Element.h"
#include "support/expect_throw.h"
#include "support/read_file.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QUXML_TEST_SANITIZED
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define QUXML_TEST_SANITIZED
#endif

namespace {

using quxml::DomParserError;
using quxml::from_string;
using quxml_test::expected_error;
using quxml_test::expected_outcome;
using quxml_test::outcome;

// ---- The exception ----

TEST(ParserError, derives_from_the_standard_exception_and_from_no_other_standard_class) {
    static_assert(std::is_base_of<std::exception, DomParserError>::value, "catchable as std::exception");
    static_assert(!std::is_base_of<std::runtime_error, DomParserError>::value, "no std::runtime_error");
    static_assert(!std::is_base_of<std::logic_error, DomParserError>::value, "no std::logic_error");
    static_assert(std::has_virtual_destructor<DomParserError>::value, "may be destroyed through its base");
    EXPECT_THROW_MESSAGE(throw DomParserError("m"), DomParserError, "m");
}

TEST(ParserError, keeps_a_copy_of_its_message) {
    std::string message = "first, and too long for the string's own buffer";
    const DomParserError error(message);
    message = "second";
    EXPECT_STREQ(error.what(), "first, and too long for the string's own buffer");
    EXPECT_EQ(error.what(), error.what());
}

TEST(ParserError, copies_hold_the_message_of_their_own) {
    const auto make_copy = [] {
        const DomParserError error("a message that is too long for the string's own buffer");
        return DomParserError(error);
    };
    EXPECT_STREQ(make_copy().what(), "a message that is too long for the string's own buffer");
}

TEST(ParserError, may_be_empty) {
    EXPECT_STREQ(DomParserError("").what(), "");
}

TEST(ParserError, is_thrown_by_value_and_caught_by_reference) {
    try {
        from_string("<a>", false);
        FAIL() << "nothing was thrown";
    } catch (std::exception& error) {
        EXPECT_TRUE(typeid(error) == typeid(DomParserError));
    }
}

// ---- Messages ----

TEST(EmptyText, is_refused_with_its_own_message) {
    EXPECT_THROW_MESSAGE(from_string("", false), DomParserError, "Empty document.");
    EXPECT_THROW_MESSAGE(from_string(std::string(), true), DomParserError, "Empty document.");
}

TEST(EmptyText, does_not_reach_libxml2) {
    const quxml_test::SilentLibxml2 silence;
    quxml_test::parse_with_libxml2("<a>");
    ASSERT_NE(xmlGetLastError(), nullptr);
    const auto handler = xmlGenericError;
    EXPECT_THROW_MESSAGE(from_string("", false), DomParserError, "Empty document.");
    EXPECT_NE(xmlGetLastError(), nullptr);
    EXPECT_EQ(xmlGenericError, handler);
    xmlResetLastError();
}

struct RefusedText {
    const char* name;
    std::string text;
};

void PrintTo(const RefusedText& row, std::ostream* out) {
    *out << row.name << ": " << row.text.substr(0, 200);
}

class Refused : public ::testing::TestWithParam<RefusedText> {};

void expect_refused(const std::string& text) {
    const std::string message = expected_error(text);
    ASSERT_NE(message, "") << "libxml2 reads this text";
    EXPECT_THROW_MESSAGE(from_string(text, false), DomParserError, message);
    EXPECT_THROW_MESSAGE(from_string(text, true), DomParserError, message);
}

TEST_P(Refused, with_the_last_error_of_libxml2) {
    expect_refused(GetParam().text);
}

std::string repeat(const std::string& piece, int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += piece;
    return text;
}

std::string nested(int levels) {
    return repeat("<a>", levels) + repeat("</a>", levels);
}

const std::vector<RefusedText>& refused_texts() {
    static const std::vector<RefusedText> rows = {
        {"blanks", "   "},
        {"line_feeds", "\n\n\n"},
        {"all_white_space", " \t\r\n"},
        {"no_markup", "plain"},
        {"one_zero_byte", std::string(1, '\0')},
        {"byte_order_mark_alone", "\xEF\xBB\xBF"},
        {"less_than_alone", "<"},
        {"declaration_alone", R"(<?xml version="1.0"?>)"},
        {"declaration_after_a_blank", R"( <?xml version="1.0"?><a/>)"},
        {"declaration_without_version", R"(<?xml encoding="UTF-8"?><a/>)"},
        {"declaration_unfinished", R"(<?xml version="1.0"<a/>)"},
        {"comment_alone", "<!-- c -->"},
        {"doctype_alone", "<!DOCTYPE a>"},
        {"opening_tag_alone", "<a>"},
        {"opening_tag_unfinished", "<a"},
        {"closing_tag_alone", "</a>"},
        {"closing_tag_of_another", "<a></b>"},
        {"closing_tag_of_another_on_line_three", "<a>\n<b>\n</c></a>"},
        {"closing_tag_unfinished", "<a></a"},
        {"closing_tag_in_other_case", "<a></A>"},
        {"crossed_tags", "<a><b></a></b>"},
        {"missing_closing_tag_below", "<a><b></a>"},
        {"two_roots", "<a/><b/>"},
        {"text_after_the_root", "<a/>text"},
        {"text_before_the_root", "text<a/>"},
        {"empty_name", "<></>"},
        {"name_with_digit_first", "<1a/>"},
        {"blank_before_name", "< a/>"},
        {"attribute_without_value", "<a x/>"},
        {"attribute_without_quotes", "<a x=1/>"},
        {"attribute_quote_unfinished", R"(<a x="1/>)"},
        {"attribute_twice", "<a x='1' x='2'/>"},
        {"attributes_without_blank", "<a x='1'y='2'/>"},
        {"attribute_with_less_than", "<a x='<'/>"},
        {"attribute_with_ampersand", "<a x='&'/>"},
        {"attribute_with_quote", R"(<a x="say "hi""/>)"},
        {"text_with_ampersand", "<a>a & b</a>"},
        {"text_with_cdata_end", "<a>]]></a>"},
        {"undeclared_entity", "<a>&e;</a>"},
        {"entity_without_semicolon", "<a>&amp</a>"},
        {"undeclared_entity_in_attribute", "<a x='&e;'/>"},
        {"entity_that_holds_itself", "<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a>&e;</a>"},
        {"entity_that_holds_itself_in_an_attribute", "<!DOCTYPE a [<!ENTITY e '&e;'>]><a x='&e;'/>"},
        {"entity_that_holds_itself_in_a_default",
         "<!DOCTYPE a [<!ENTITY e '&e;'><!ATTLIST a x CDATA '&e;'>]><a/>"},
        {"entity_that_holds_itself_in_an_element", "<!DOCTYPE a [<!ENTITY e '<b>&e;</b>'>]><a>&e;</a>"},
        {"parameter_entity_that_holds_itself", "<!DOCTYPE a [<!ENTITY % p '&#37;p;'>%p;]><a/>"},
        {"parameter_entities_that_hold_each_other",
         "<!DOCTYPE a [<!ENTITY % p '&#37;q;'><!ENTITY % q '&#37;p;'>%p;]><a/>"},
        {"entity_that_is_not_balanced", "<!DOCTYPE a [<!ENTITY e '<b>'>]><a>&e;</a>"},
        {"reference_to_zero", "<a>&#0;</a>"},
        {"reference_to_form_feed", "<a>&#12;</a>"},
        {"reference_to_vertical_tab", "<a>&#xB;</a>"},
        {"reference_beyond_unicode", "<a>&#x110000;</a>"},
        {"reference_without_number", "<a>&#;</a>"},
        {"form_feed", "<a>\f</a>"},
        {"form_feed_after_line_feed", "<a>\n\f</a>"},
        {"vertical_tab", "<a>\v</a>"},
        {"vertical_tab_after_line_feed", "<a>\n\v</a>"},
        {"control_character", "<a>\x01</a>"},
        {"zero_byte_in_text", std::string("<a>\0</a>", 8)},
        {"zero_byte_in_tag", std::string("<a\0></a>", 8)},
        {"cdata_unfinished", "<a><![CDATA[x</a>"},
        {"comment_unfinished", "<a><!-- x</a>"},
        {"comment_with_two_hyphens", "<a><!-- x -- y --></a>"},
        {"instruction_unfinished", "<a><?p x</a>"},
        {"instruction_called_xml", "<a><?xml version='1.0'?></a>"},
        {"doctype_unfinished", "<!DOCTYPE a [<!ENTITY e 'x'><a/>"},
        {"doctype_after_the_root", "<a/><!DOCTYPE a>"},
        {"wrong_utf8", "<a>\xFF</a>"},
        {"utf8_cut_short", "<a>\xC3</a>"},
        {"utf8_over_long", "<a>\xC0\xAF</a>"},
        {"utf8_surrogate", "<a>\xED\xA0\x80</a>"},
        {"latin1_without_declaration", "<?xml version=\"1.0\"?>\n<a>\n\xE9</a>"},
        {"unknown_encoding", R"(<?xml version="1.0" encoding="nonsense"?><a/>)"},
        {"encoding_that_the_bytes_belie", "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>\xE9</a>"},
        {"bytes_that_the_encoding_lacks", "<?xml version=\"1.0\" encoding=\"EUC-JP\"?><a>\xFF</a>"},
        {"utf16_cut_short", std::string("\xFF\xFE<\0a\0>\0", 8)},
        {"nested_too_deep", nested(258)},
    };
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Text, Refused, ::testing::ValuesIn(refused_texts()),
                         [](const ::testing::TestParamInfo<RefusedText>& info) { return info.param.name; });

// Large texts are made by their own tests: a table of them would be built at every start of the program.

TEST(RefusedLargeText, nested_much_too_deep) {
    expect_refused(nested(100000));
}

TEST(RefusedLargeText, nested_much_too_deep_and_unfinished) {
    expect_refused(repeat("<a>", 100000));
}

TEST(RefusedLargeText, long_name_that_is_not_closed) {
    expect_refused("<" + std::string(1000000, 'x') + "></b>");
}

TEST(RefusedLargeText, long_text_that_is_not_closed) {
    expect_refused("<a>" + std::string(1000000, 'x'));
}

TEST(RefusedLargeText, error_far_down) {
    expect_refused("<a>" + std::string(70000, '\n') + "<b></a>");
}

TEST(RefusedLargeText, error_far_right) {
    expect_refused("<a>" + std::string(70000, ' ') + "<b></a>");
}

TEST(RefusedLargeText, text_beyond_ten_million_bytes) {
    const std::string million(1000000, 'x');
    expect_refused("<a>" + repeat(million, 11) + "&#65;" + million + "</a>");
}

struct PinnedMessage {
    const char* text;
    const char* message;
};

TEST(PinnedMessages, are_those_of_libxml2_version_2914) {
    QUXML_SKIP_UNLESS_LIBXML2_2_9_14();
    const PinnedMessage rows[] = {
        {"   ", "Start tag expected, '<' not found (error code: 4) at line 1, column 4"},
        {"<a></b>", "Opening and ending tag mismatch: a line 1 and b (error code: 76) at line 1, column 8"},
        {"<a>\n<b>\n</c></a>",
         "Opening and ending tag mismatch: b line 2 and c (error code: 76) at line 3, column 5"},
        {"<a>", "Premature end of data in tag a line 1 (error code: 77) at line 1, column 4"},
        {"<a x='1' x='2'/>", "Attribute x redefined (error code: 42) at line 1, column 15"},
        {"<a>&e;</a>", "Entity 'e' not defined (error code: 26) at line 1, column 7"},
        {"<a>\n\v</a>", "PCDATA invalid Char value 11 (error code: 9) at line 2, column 1"},
        {"<a>&#12;</a>", "xmlParseCharRef: invalid xmlChar value 12 (error code: 9) at line 1, column 9"},
        {"<?xml version='1.0' encoding='nonsense'?><a/>",
         "Unsupported encoding nonsense (error code: 32) at line 1, column 40"},
        {"<a/><b/>", "Extra content at the end of the document (error code: 5) at line 1, column 5"},
    };
    for (const PinnedMessage& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_THROW_MESSAGE(from_string(row.text, false), DomParserError, row.message);
    }
}

TEST(PinnedMessages, only_the_last_line_feed_of_a_message_is_cut) {
    QUXML_SKIP_UNLESS_LIBXML2_2_9_14();
    EXPECT_THROW_MESSAGE(
        from_string("<a>\xFF</a>", false), DomParserError,
        "Input is not proper UTF-8, indicate encoding !\nBytes: 0xFF 0x3C 0x2F 0x61 (error code: 9) "
        "at line 1, column 4");
}

TEST(PinnedMessages, too_deep_nesting_names_the_limit_of_libxml2) {
    QUXML_SKIP_UNLESS_LIBXML2_2_9_14();
    EXPECT_THROW_MESSAGE(
        from_string(nested(258), false), DomParserError,
        "Excessive depth in document: 256 use XML_PARSE_HUGE option (error code: 1) at line 1, "
        "column 772");
}

#ifndef QUXML_TEST_SANITIZED
/// What /proc/meminfo says.
unsigned long long get_available_kib() {
    std::ifstream meminfo("/proc/meminfo");
    unsigned long long kib = 0;
    for (std::string word; kib == 0 && meminfo >> word;) {
        if (word == "MemAvailable:")
            meminfo >> kib;
    }
    return kib;
}
#endif

TEST(TooLargeText, is_refused_before_libxml2_sees_it) {
#ifdef QUXML_TEST_SANITIZED
    GTEST_SKIP() << "needs 2 GiB of memory, and more than that with a sanitizer";
#else
    if (sizeof(std::size_t) < 8)
        GTEST_SKIP() << "no string is that long here";
    if (get_available_kib() < 3ULL * 1024 * 1024)
        GTEST_SKIP() << "needs 3 GiB of free memory";
    const quxml_test::SilentLibxml2 silence;
    quxml_test::parse_with_libxml2("<a>");
    const std::string text(static_cast<std::size_t>(INT_MAX) + 1, ' ');
    EXPECT_THROW_MESSAGE(from_string(text, false), DomParserError, "Document too large.");
    EXPECT_NE(xmlGetLastError(), nullptr);
    xmlResetLastError();
#endif
}

// ---- Records of libxml2 that are not as usual ----

/// Sets what libxml2 calls for each error, for a scope.
class StructuredHandler {
public:
    explicit StructuredHandler(xmlStructuredErrorFunc handler) {
        xmlSetStructuredErrorFunc(nullptr, handler);
    }
    ~StructuredHandler() { xmlSetStructuredErrorFunc(nullptr, nullptr); }
    StructuredHandler(const StructuredHandler&) = delete;
    StructuredHandler& operator=(const StructuredHandler&) = delete;
};

// The record is const from libxml2 2.12 on; a template fits both.
template <class Error>
void forget_error(void* /*context*/, Error /*error*/) {
    xmlResetLastError();
}

TEST(ErrorRecord, that_is_missing_gives_an_empty_text_and_zeros) {
    const StructuredHandler handler(forget_error);
    EXPECT_THROW_MESSAGE(from_string("<a>", false), DomParserError, " (error code: 0) at line 0, column 0");
}

#if LIBXML_VERSION < 21200
const char* other_message = nullptr;

/// Gives the record another message, or none.
void change_message(void* /*context*/, xmlError* /*error*/) {
    xmlError* error = xmlGetLastError();
    xmlFree(error->message);
    error->message = other_message == nullptr ? nullptr : xmlMemStrdup(other_message);
}

/// What is reported of a record with this message, less the error's code and place.
std::string reported(const char* message) {
    const std::string text = "<a></b>";
    const std::string expected = expected_error(text);
    const std::string place = expected.substr(expected.find(" (error code: "));
    other_message = message;
    const StructuredHandler handler(change_message);
    const std::string got = outcome(text);
    const std::size_t end = got.size() - place.size();
    EXPECT_EQ(got.substr(end), place);
    return got.substr(0, end);
}

TEST(ErrorRecord, without_message_gives_an_empty_text) {
    EXPECT_EQ(reported(nullptr), "refused: ");
    EXPECT_EQ(reported(""), "refused: ");
}

TEST(ErrorRecord, loses_the_last_character_of_its_message_even_if_that_is_no_line_feed_which_is_wanted) {
    EXPECT_EQ(reported("text\n"), "refused: text");
    EXPECT_EQ(reported("text\n\n"), "refused: text\n");
    EXPECT_EQ(reported("text!"), "refused: text");
    EXPECT_EQ(reported("\n"), "refused: ");
    EXPECT_EQ(reported("x"), "refused: ");
}
#endif

// ---- What is left behind in libxml2 ----

TEST(LastError, is_reset_after_a_failure) {
    EXPECT_THROW(from_string("<a>", false), DomParserError);
    EXPECT_EQ(xmlGetLastError(), nullptr);
}

TEST(LastError, is_reset_after_a_success_even_if_libxml2_recorded_a_problem) {
    const std::string text = "<p:a/>";
    {
        const quxml_test::SilentLibxml2 silence;
        ASSERT_NE(quxml_test::parse_with_libxml2(text), nullptr);
        ASSERT_NE(xmlGetLastError(), nullptr) << "this text is to be read with a complaint";
        xmlResetLastError();
    }
    EXPECT_EQ(outcome(text), "p:a");
    EXPECT_EQ(xmlGetLastError(), nullptr);
}

TEST(LastError, of_an_earlier_use_of_libxml2_does_not_matter) {
    const quxml_test::SilentLibxml2 silence;
    quxml_test::parse_with_libxml2("<a>");
    ASSERT_NE(xmlGetLastError(), nullptr);
    EXPECT_EQ(outcome("<a/>"), "a");
    EXPECT_EQ(xmlGetLastError(), nullptr);
}

#if LIBXML_VERSION < 21200
TEST(LastError, of_an_earlier_use_that_found_no_memory_does_not_matter) {
    const quxml_test::SilentLibxml2 silence;
    quxml_test::parse_with_libxml2("<a>");
    ASSERT_NE(xmlGetLastError(), nullptr);
    xmlGetLastError()->code = XML_ERR_NO_MEMORY;
    EXPECT_EQ(outcome("<a/>"), "a");
}
#endif

TEST(LastError, of_one_text_is_not_reported_for_the_next) {
    const std::string first = expected_error("<a></b>");
    const std::string second = expected_error("<c>\n");
    EXPECT_NE(first, second);
    EXPECT_THROW_MESSAGE(from_string("<a></b>", false), DomParserError, first);
    EXPECT_THROW_MESSAGE(from_string("<c>\n", false), DomParserError, second);
    EXPECT_THROW_MESSAGE(from_string("<a></b>", false), DomParserError, first);
}

/// Texts that make libxml2 complain, be it that it reads them or refuses them.
const char* const noisy_texts[] = {
    "<a></b>",
    "   ",
    "<p:a/>",
    "<a xmlns='relative'/>",
    "<?xml version='1.1'?><a/>",
    "<a>\xFF</a>",
    "<!DOCTYPE a SYSTEM 'none.dtd'><a>&undefined;</a>",
    "<!DOCTYPE a [<!ENTITY e 'x'><!ENTITY e 'y'><!ELEMENT a EMPTY><!ELEMENT a EMPTY>]><a/>",
    "<?xml version='1.0' encoding='nonsense'?><a/>",
};

/// What `action` prints on standard error when libxml2 begins with its own printing handler.
template <class Action>
std::string standard_error_of(Action action) {
    xmlSetGenericErrorFunc(nullptr, nullptr);
    ::testing::internal::CaptureStderr();
    action();
    return ::testing::internal::GetCapturedStderr();
}

TEST(StandardError, stays_silent_where_libxml2_alone_would_print) {
    for (const char* const text : noisy_texts) {
        SCOPED_TRACE(text);
        EXPECT_NE(standard_error_of([text] { quxml_test::parse_with_libxml2(text); }), "");
        xmlResetLastError();
        EXPECT_EQ(standard_error_of([text] { outcome(text); }), "");
    }
}

TEST(StandardError, stays_silent_after_the_call_because_the_handler_stays_which_is_wanted) {
    EXPECT_EQ(standard_error_of([] {
                  outcome("<a/>");
                  quxml_test::parse_with_libxml2("<a></b>");
                  xmlGenericError(xmlGenericErrorContext, "%s", "printed by the application");
              }),
              "");
    xmlResetLastError();
}

int handler_calls = 0;

void count_call(void* /*context*/, const char* /*format*/, ...) {  // NOLINT(cert-dcl50-cpp)
    ++handler_calls;
}

TEST(GenericErrorHandler, of_the_application_is_replaced_by_every_call_which_is_wanted) {
    for (const char* const text : {"<a></b>", "<a/>"}) {
        SCOPED_TRACE(text);
        xmlSetGenericErrorFunc(nullptr, count_call);
        handler_calls = 0;
        outcome(text);
        EXPECT_NE(xmlGenericError, count_call);
        quxml_test::parse_with_libxml2("<a></b>");
        EXPECT_EQ(handler_calls, 0);
    }
    xmlResetLastError();
}

TEST(GenericErrorHandler, is_the_same_one_after_each_call) {
    outcome("<a/>");
    const auto first = xmlGenericError;
    outcome("<a>");
    EXPECT_EQ(xmlGenericError, first);
}

template <class Error>
void count_error(void* context, Error /*error*/) {
    ++*static_cast<int*>(context);
}

TEST(StructuredErrorHandler, of_the_application_is_called_and_stays) {
    int errors = 0;
    xmlSetStructuredErrorFunc(&errors, count_error);
    outcome("<a/>");
    EXPECT_EQ(errors, 0);
    outcome("<a></b>");
    const int errors_of_refused_text = errors;
    EXPECT_GT(errors_of_refused_text, 0);
    outcome("<p:a/>");
    EXPECT_GT(errors, errors_of_refused_text);
    EXPECT_EQ(xmlStructuredErrorContext, &errors);
    xmlSetStructuredErrorFunc(nullptr, nullptr);
}

#if LIBXML_VERSION < 21100
template <class Error>
void install_another_handler(void* /*context*/, Error /*error*/) {
    xmlSetStructuredErrorFunc(nullptr, nullptr);
}

TEST(StructuredErrorHandler, that_a_handler_installs_while_text_is_read_is_undone) {
    int context = 0;
    xmlSetStructuredErrorFunc(&context, install_another_handler);
    outcome("<a></b>");
    EXPECT_EQ(xmlStructuredErrorContext, &context);
    xmlSetStructuredErrorFunc(nullptr, nullptr);
}

TEST(ParameterEntityLoop, is_the_error_that_is_reported_though_libxml2_goes_on_to_another) {
    const std::string text = R"(<!DOCTYPE a [<!ENTITY % p '&#37;q;'><!ENTITY % q '&#37;p;'>%p;]><a>)";
    EXPECT_EQ(outcome(text).find("refused: Detected an entity reference loop (error code: 89)"), 0U);
    EXPECT_EQ(expected_error(text).find("89"), std::string::npos);
}
#endif

/// Reads another text, but not for the errors of that text.
template <class Error>
void read_another_text(void* context, Error /*error*/) {
    bool& is_reading = *static_cast<bool*>(context);
    if (is_reading)
        return;
    is_reading = true;
    from_string("<other/>", false);
    is_reading = false;
}

TEST(StructuredErrorHandler, that_reads_another_text_takes_the_message_of_the_first) {
    bool is_reading = false;
    xmlSetStructuredErrorFunc(&is_reading, read_another_text);
    EXPECT_THROW_MESSAGE(from_string("<a>", false), DomParserError, " (error code: 0) at line 0, column 0");
    xmlSetStructuredErrorFunc(nullptr, nullptr);
}

TEST(GlobalSwitches, are_left_alone) {
    const int substitute = xmlSubstituteEntitiesDefault(1);
    const int keep_blanks = xmlKeepBlanksDefault(0);
    EXPECT_EQ(outcome("<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>"), "a");
    EXPECT_EQ(outcome("<a>  </a>"), "a{\"  \"}");
    EXPECT_EQ(xmlSubstituteEntitiesDefault(substitute), 1);
    EXPECT_EQ(xmlKeepBlanksDefault(keep_blanks), 0);
}

TEST(Failure, of_one_call_leaves_documents_read_before_and_after_alone) {
    const auto before = from_string("<a><b/></a>", false);
    EXPECT_THROW(from_string("<a><b></a>", false), DomParserError);
    const auto after = from_string("<a><c/></a>", false);
    EXPECT_EQ(quxml_test::to_line(before->get_root_node()), "a{b}");
    EXPECT_EQ(quxml_test::to_line(after->get_root_node()), "a{c}");
}

// ---- Texts with random faults ----

/// Changes, drops or doubles a few bytes.
std::string spoil(std::string text, std::mt19937& random) {
    static const std::string bytes = std::string(1, '\0') + "<>&;/='\"!?-[]:ax \n\x80\xC3\xFF";
    for (std::size_t i = 1 + random() % 3; i > 0; --i) {
        const std::size_t place = random() % text.size();
        const char byte = bytes[random() % bytes.size()];
        switch (random() % 3) {
            case 0:
                text[place] = byte;
                break;
            case 1:
                text.erase(place, 1 + random() % 4);
                break;
            default:
                text.insert(place, 1, byte);
        }
        if (text.empty())
            text = "<";
    }
    return text;
}

TEST(SpoiledText, is_read_or_refused_as_libxml2_does) {
    int refused = 0;
    const int rounds = 500;
    const char* const files[] = {"catalog.xml", "dropped.xml", "names.xml", "texts.xml"};
    for (const char* const file : files) {
        const std::string sound = quxml_test::read_file(std::string(QUXML_REPOSITORY "/tests/data/") + file);
        for (unsigned seed = 0; seed < rounds; ++seed) {
            SCOPED_TRACE(std::string(file) + ", seed " + std::to_string(seed));
            std::mt19937 random(seed);
            const std::string text = spoil(sound, random);
            const std::string expected = expected_outcome(text);
            ASSERT_EQ(outcome(text), expected);
            if (expected.rfind("refused: ", 0) == 0)
                ++refused;
        }
    }
    EXPECT_GT(refused, rounds);
    EXPECT_LT(refused, 4 * rounds);
}

}  // namespace
