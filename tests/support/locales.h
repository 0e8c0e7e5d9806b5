// SPDX-License-Identifier: MIT
#ifndef QUXML_TESTS_SUPPORT_LOCALES_H
#define QUXML_TESTS_SUPPORT_LOCALES_H

// Locales whose character classes differ from the ordinary ones.

#include <array>
#include <cstddef>
#include <locale>

namespace quxml_test {

/// Makes a locale the global one, and puts the former one back.
class GlobalLocale {
public:
    explicit GlobalLocale(const std::locale& locale) : former(std::locale::global(locale)) {}
    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;
    ~GlobalLocale() { std::locale::global(former); }

private:
    std::locale former;
};

/// The facet in the locale that everything starts with.
inline std::locale with_facet(std::ctype<char>* facet) {
    return std::locale(std::locale::classic(), facet);
}

/// "4" counts as a small "a".
class FoursAreLetters : public std::ctype<char> {
protected:
    using std::ctype<char>::do_toupper;
    char do_toupper(char c) const override { return c == '4' ? 'A' : std::ctype<char>::do_toupper(c); }
};

/// Small letters have no capitals.
class NoCapitals : public std::ctype<char> {
protected:
    using std::ctype<char>::do_toupper;
    char do_toupper(char c) const override { return c; }
};

/// The capital O with two dots above, in Latin 1, is that of the small one.
class LatinLetters : public std::ctype<char> {
protected:
    using std::ctype<char>::do_toupper;
    char do_toupper(char c) const override { return c == '\xF6' ? '\xD6' : std::ctype<char>::do_toupper(c); }
};

/// "_" is white space, and the blank is not.
class UnderscoresAreSpace : public std::ctype<char> {
public:
    UnderscoresAreSpace() : std::ctype<char>(get_table()) {}

private:
    static const mask* get_table() {
        static const std::array<mask, table_size> table = create_table();
        return table.data();
    }

    static std::array<mask, table_size> create_table() {
        std::array<mask, table_size> table = {};
        for (std::size_t i = 0; i < table_size; ++i)
            table.at(i) = classic_table()[i];
        table['_'] = space;
        table[' '] = print;
        return table;
    }
};

}  // namespace quxml_test

#endif
