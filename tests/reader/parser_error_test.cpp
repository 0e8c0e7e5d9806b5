// Covers what happens to text that can not be read: the exception and its message, the silence on standard
// error, and the state in which libxml2 is left.

#include "quxml/DomParserError.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <exception>
#include <fstream>
#include <iterator>
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

TEST(ParserError, DerivesFromTheStandardExceptionAndFromNoOtherStandardClass) {
    static_assert(std::is_base_of<std::exception, DomParserError>::value, "catchable as std::exception");
    static_assert(!std::is_base_of<std::runtime_error, DomParserError>::value, "no std::runtime_error");
    static_assert(!std::is_base_of<std::logic_error, DomParserError>::value, "no std::logic_error");
    static_assert(std::has_virtual_destructor<DomParserError>::value, "may be destroyed through its base");
    EXPECT_THROW_MESSAGE(throw DomParserError("m"), DomParserError, "m");
}

TEST(ParserError, KeepsACopyOfItsMessage) {
    std::string message = "first, and too long for the string's own buffer";
    const DomParserError error(message);
    message = "second";
    EXPECT_STREQ(error.what(), "first, and too long for the string's own buffer");
    EXPECT_EQ(error.what(), error.what());
}

TEST(ParserError, CopiesHoldTheMessageOfTheirOwn) {
    const auto make_copy = [] {
        const DomParserError error("a message that is too long for the string's own buffer");
        return DomParserError(error);
    };
    EXPECT_STREQ(make_copy().what(), "a message that is too long for the string's own buffer");
}

TEST(ParserError, MayBeEmpty) {
    EXPECT_STREQ(DomParserError("").what(), "");
}

TEST(ParserError, IsThrownByValueAndCaughtByReference) {
    try {
        from_string("<a>", false);
        FAIL() << "nothing was thrown";
    } catch (std::exception& error) {
        EXPECT_TRUE(typeid(error) == typeid(DomParserError));
    }
}

// ---- Messages ----

TEST(EmptyText, IsRefusedWithItsOwnMessage) {
    EXPECT_THROW_MESSAGE(from_string("", false), DomParserError, "Empty document.");
    EXPECT_THROW_MESSAGE(from_string(std::string(), true), DomParserError, "Empty document.");
}

TEST(EmptyText, DoesNotReachLibxml2) {
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

TEST_P(Refused, WithTheLastErrorOfLibxml2) {
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
        {"Blanks", "   "},
        {"LineFeeds", "\n\n\n"},
        {"AllWhiteSpace", " \t\r\n"},
        {"NoMarkup", "plain"},
        {"OneZeroByte", std::string(1, '\0')},
        {"ByteOrderMarkAlone", "\xEF\xBB\xBF"},
        {"LessThanAlone", "<"},
        {"DeclarationAlone", "<?xml version=\"1.0\"?>"},
        {"DeclarationBehindABlank", " <?xml version=\"1.0\"?><a/>"},
        {"DeclarationWithoutVersion", "<?xml encoding=\"UTF-8\"?><a/>"},
        {"DeclarationUnfinished", "<?xml version=\"1.0\"<a/>"},
        {"CommentAlone", "<!-- c -->"},
        {"DoctypeAlone", "<!DOCTYPE a>"},
        {"OpeningTagAlone", "<a>"},
        {"OpeningTagUnfinished", "<a"},
        {"ClosingTagAlone", "</a>"},
        {"ClosingTagOfAnother", "<a></b>"},
        {"ClosingTagOfAnotherOnLineThree", "<a>\n<b>\n</c></a>"},
        {"ClosingTagUnfinished", "<a></a"},
        {"ClosingTagInOtherCase", "<a></A>"},
        {"CrossedTags", "<a><b></a></b>"},
        {"MissingClosingTagBelow", "<a><b></a>"},
        {"TwoRoots", "<a/><b/>"},
        {"TextBehindTheRoot", "<a/>text"},
        {"TextBeforeTheRoot", "text<a/>"},
        {"EmptyName", "<></>"},
        {"NameWithDigitFirst", "<1a/>"},
        {"BlankBeforeName", "< a/>"},
        {"AttributeWithoutValue", "<a x/>"},
        {"AttributeWithoutQuotes", "<a x=1/>"},
        {"AttributeQuoteUnfinished", "<a x=\"1/>"},
        {"AttributeTwice", "<a x='1' x='2'/>"},
        {"AttributesWithoutBlank", "<a x='1'y='2'/>"},
        {"AttributeWithLessThan", "<a x='<'/>"},
        {"AttributeWithAmpersand", "<a x='&'/>"},
        {"AttributeWithQuote", "<a x=\"say \"hi\"\"/>"},
        {"TextWithAmpersand", "<a>a & b</a>"},
        {"TextWithCdataEnd", "<a>]]></a>"},
        {"UndeclaredEntity", "<a>&e;</a>"},
        {"EntityWithoutSemicolon", "<a>&amp</a>"},
        {"UndeclaredEntityInAttribute", "<a x='&e;'/>"},
        {"EntityThatHoldsItself", "<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a>&e;</a>"},
        {"EntityThatHoldsItselfInAnAttribute", "<!DOCTYPE a [<!ENTITY e '&e;'>]><a x='&e;'/>"},
        {"EntityThatHoldsItselfInADefault", "<!DOCTYPE a [<!ENTITY e '&e;'><!ATTLIST a x CDATA '&e;'>]><a/>"},
        {"EntityThatHoldsItselfInAnElement", "<!DOCTYPE a [<!ENTITY e '<b>&e;</b>'>]><a>&e;</a>"},
        {"ParameterEntityThatHoldsItself", "<!DOCTYPE a [<!ENTITY % p '&#37;p;'>%p;]><a/>"},
        {"ParameterEntitiesThatHoldEachOther",
         "<!DOCTYPE a [<!ENTITY % p '&#37;q;'><!ENTITY % q '&#37;p;'>%p;]><a/>"},
        {"EntityThatIsNotBalanced", "<!DOCTYPE a [<!ENTITY e '<b>'>]><a>&e;</a>"},
        {"ReferenceToZero", "<a>&#0;</a>"},
        {"ReferenceToFormFeed", "<a>&#12;</a>"},
        {"ReferenceToVerticalTab", "<a>&#xB;</a>"},
        {"ReferenceBeyondUnicode", "<a>&#x110000;</a>"},
        {"ReferenceWithoutNumber", "<a>&#;</a>"},
        {"FormFeed", "<a>\f</a>"},
        {"FormFeedBehindLineFeed", "<a>\n\f</a>"},
        {"VerticalTab", "<a>\v</a>"},
        {"VerticalTabBehindLineFeed", "<a>\n\v</a>"},
        {"ControlCharacter", "<a>\x01</a>"},
        {"ZeroByteInText", std::string("<a>\0</a>", 8)},
        {"ZeroByteInTag", std::string("<a\0></a>", 8)},
        {"CdataUnfinished", "<a><![CDATA[x</a>"},
        {"CommentUnfinished", "<a><!-- x</a>"},
        {"CommentWithTwoHyphens", "<a><!-- x -- y --></a>"},
        {"InstructionUnfinished", "<a><?p x</a>"},
        {"InstructionCalledXml", "<a><?xml version='1.0'?></a>"},
        {"DoctypeUnfinished", "<!DOCTYPE a [<!ENTITY e 'x'><a/>"},
        {"DoctypeBehindTheRoot", "<a/><!DOCTYPE a>"},
        {"WrongUtf8", "<a>\xFF</a>"},
        {"Utf8CutShort", "<a>\xC3</a>"},
        {"Utf8OverLong", "<a>\xC0\xAF</a>"},
        {"Utf8Surrogate", "<a>\xED\xA0\x80</a>"},
        {"Latin1WithoutDeclaration", "<?xml version=\"1.0\"?>\n<a>\n\xE9</a>"},
        {"UnknownEncoding", "<?xml version=\"1.0\" encoding=\"nonsense\"?><a/>"},
        {"EncodingThatTheBytesBelie", "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>\xE9</a>"},
        {"Utf16CutShort", std::string("\xFF\xFE<\0a\0>\0", 8)},
        {"NestedTooDeep", nested(258)},
    };
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Text, Refused, ::testing::ValuesIn(refused_texts()),
                         [](const ::testing::TestParamInfo<RefusedText>& info) { return info.param.name; });

// Large texts are made by their own tests: a table of them would be built at every start of the program.

TEST(RefusedLargeText, NestedMuchTooDeep) {
    expect_refused(nested(100000));
}

TEST(RefusedLargeText, NestedMuchTooDeepAndUnfinished) {
    expect_refused(repeat("<a>", 100000));
}

TEST(RefusedLargeText, LongNameThatIsNotClosed) {
    expect_refused("<" + std::string(1000000, 'x') + "></b>");
}

TEST(RefusedLargeText, LongTextThatIsNotClosed) {
    expect_refused("<a>" + std::string(1000000, 'x'));
}

TEST(RefusedLargeText, ErrorFarDown) {
    expect_refused("<a>" + std::string(70000, '\n') + "<b></a>");
}

TEST(RefusedLargeText, ErrorFarRight) {
    expect_refused("<a>" + std::string(70000, ' ') + "<b></a>");
}

TEST(RefusedLargeText, TextBeyondTenMillionBytes) {
    const std::string million(1000000, 'x');
    expect_refused("<a>" + repeat(million, 11) + "&#65;" + million + "</a>");
}

struct PinnedMessage {
    const char* text;
    const char* message;
};

TEST(PinnedMessages, AreThoseOfLibxml2Version2914) {
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

TEST(PinnedMessages, OnlyTheLastLineFeedOfAMessageIsCut) {
    QUXML_SKIP_UNLESS_LIBXML2_2_9_14();
    EXPECT_THROW_MESSAGE(
        from_string("<a>\xFF</a>", false), DomParserError,
        "Input is not proper UTF-8, indicate encoding !\nBytes: 0xFF 0x3C 0x2F 0x61 (error code: 9) "
        "at line 1, column 4");
}

TEST(PinnedMessages, TooDeepNestingNamesTheLimitOfLibxml2) {
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

TEST(TooLargeText, IsRefusedBeforeLibxml2SeesIt) {
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

TEST(ErrorRecord, ThatIsMissingGivesAnEmptyTextAndZeros) {
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

TEST(ErrorRecord, WithoutMessageGivesAnEmptyText) {
    EXPECT_EQ(reported(nullptr), "refused: ");
    EXPECT_EQ(reported(""), "refused: ");
}

TEST(ErrorRecord, LosesTheLastCharacterOfItsMessageEvenIfThatIsNoLineFeedWhichIsWanted) {
    EXPECT_EQ(reported("text\n"), "refused: text");
    EXPECT_EQ(reported("text\n\n"), "refused: text\n");
    EXPECT_EQ(reported("text!"), "refused: text");
    EXPECT_EQ(reported("\n"), "refused: ");
    EXPECT_EQ(reported("x"), "refused: ");
}
#endif

// ---- What is left behind in libxml2 ----

TEST(LastError, IsResetAfterAFailure) {
    EXPECT_THROW(from_string("<a>", false), DomParserError);
    EXPECT_EQ(xmlGetLastError(), nullptr);
}

TEST(LastError, IsResetAfterASuccessEvenIfLibxml2RecordedAProblem) {
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

TEST(LastError, OfAnEarlierUseOfLibxml2DoesNotMatter) {
    const quxml_test::SilentLibxml2 silence;
    quxml_test::parse_with_libxml2("<a>");
    ASSERT_NE(xmlGetLastError(), nullptr);
    EXPECT_EQ(outcome("<a/>"), "a");
    EXPECT_EQ(xmlGetLastError(), nullptr);
}

#if LIBXML_VERSION < 21200
TEST(LastError, OfAnEarlierUseThatFoundNoMemoryDoesNotMatter) {
    const quxml_test::SilentLibxml2 silence;
    quxml_test::parse_with_libxml2("<a>");
    ASSERT_NE(xmlGetLastError(), nullptr);
    xmlGetLastError()->code = XML_ERR_NO_MEMORY;
    EXPECT_EQ(outcome("<a/>"), "a");
}
#endif

TEST(LastError, OfOneTextIsNotReportedForTheNext) {
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

TEST(StandardError, StaysSilentWhereLibxml2AloneWouldPrint) {
    for (const char* const text : noisy_texts) {
        SCOPED_TRACE(text);
        EXPECT_NE(standard_error_of([text] { quxml_test::parse_with_libxml2(text); }), "");
        xmlResetLastError();
        EXPECT_EQ(standard_error_of([text] { outcome(text); }), "");
    }
}

TEST(StandardError, StaysSilentAfterTheCallBecauseTheHandlerStaysWhichIsWanted) {
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

TEST(GenericErrorHandler, OfTheApplicationIsReplacedByEveryCallWhichIsWanted) {
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

TEST(GenericErrorHandler, IsTheSameOneAfterEachCall) {
    outcome("<a/>");
    const auto first = xmlGenericError;
    outcome("<a>");
    EXPECT_EQ(xmlGenericError, first);
}

template <class Error>
void count_error(void* context, Error /*error*/) {
    ++*static_cast<int*>(context);
}

TEST(StructuredErrorHandler, OfTheApplicationIsCalledAndStays) {
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

TEST(Failure, OfOneCallLeavesDocumentsReadBeforeAndAfterAlone) {
    const auto before = from_string("<a><b/></a>", false);
    EXPECT_THROW(from_string("<a><b></a>", false), DomParserError);
    const auto after = from_string("<a><c/></a>", false);
    EXPECT_EQ(quxml_test::to_line(before->get_root_node()), "a{b}");
    EXPECT_EQ(quxml_test::to_line(after->get_root_node()), "a{c}");
}

// ---- Texts with random faults ----

std::string read_data(const std::string& file) {
    std::ifstream stream(std::string(QUXML_TEST_DATA) + "/" + file, std::ios::binary);
    EXPECT_TRUE(stream) << "can not open " << file;
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

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

TEST(SpoiledText, IsReadOrRefusedAsLibxml2Does) {
    int refused = 0;
    const int rounds = 500;
    const char* const files[] = {"catalog.xml", "dropped.xml", "names.xml", "texts.xml"};
    for (const char* const file : files) {
        const std::string sound = read_data(file);
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
