// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_TOOLS_CONVERTERS_H
#define QUXML_TESTS_TOOLS_CONVERTERS_H

#include <iconv.h>

namespace quxml_test {

/// Whether this machine's C library converts encodings. Debian's cross compiler for powerpc comes without converters,
/// and so do many small devices.
inline bool has_converters() {
    iconv_t converter = iconv_open("ISO-8859-1", "UTF-8");
    // NOLINTNEXTLINE(performance-no-int-to-ptr): iconv_open is declared so
    return converter != reinterpret_cast<iconv_t>(-1) && iconv_close(converter) == 0;
}

}  // namespace quxml_test

#endif
