// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_STUB_XMLERROR_H
#define QUXML_TESTS_STUB_XMLERROR_H

#define DEPRECATED_SINCE(version) DEPRECATED_IF_##version
#if STUB_LIBXML_VERSION < 21200
#define DEPRECATED_IF_21200
#else
#define DEPRECATED_IF_21200 [[deprecated]]
#endif
#if STUB_LIBXML_VERSION < 21400
#define DEPRECATED_IF_21400
#else
#define DEPRECATED_IF_21400 [[deprecated]]
#endif

enum xmlParserErrors { XML_ERR_NO_MEMORY = 2, XML_ERR_ENTITY_LOOP = 89 };

struct xmlError {
    int code;
    char* message;
    int line;
    int int2;
    void* ctxt;
};

using xmlErrorPtr = xmlError*;

// From 2.12 on, nobody outside libxml2 may change an error.
#if STUB_LIBXML_VERSION < 21200
using xmlReportedError = xmlErrorPtr;
#else
using xmlReportedError = const xmlError*;
#endif

extern "C" {
using xmlGenericErrorFunc = void (*)(void* context, const char* format, ...);
using xmlStructuredErrorFunc = void (*)(void* context, xmlReportedError error);

xmlReportedError xmlGetLastError();
void xmlResetLastError();
void xmlSetGenericErrorFunc(void* context, xmlGenericErrorFunc handler);
void xmlSetStructuredErrorFunc(void* context, xmlStructuredErrorFunc handler);

// A macro from 2.14 on, and then not the business of who has another name for what it calls.
#if STUB_LIBXML_VERSION < 21400
DEPRECATED_SINCE(21200) void initGenericErrorDefaultFunc(xmlGenericErrorFunc* handler);
#endif

xmlStructuredErrorFunc* stub_structured_error();
void** stub_structured_error_context();
}

#define xmlStructuredError (*stub_structured_error())
#define xmlStructuredErrorContext (*stub_structured_error_context())

#endif
