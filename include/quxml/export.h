// SPDX-License-Identifier: MIT
#ifndef QUXML_EXPORT_H
#define QUXML_EXPORT_H

/// Marks what the library shows to its users; everything else is compiled with hidden visibility.
#define QUXML_EXPORT __attribute__((visibility("default")))

/// Marks a member of an exported class that only the library itself calls.
#define QUXML_HIDDEN __attribute__((visibility("hidden")))

#endif
