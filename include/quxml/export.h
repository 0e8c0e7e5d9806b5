#ifndef QUXML_EXPORT_H
#define QUXML_EXPORT_H

/// Marks what the library shows to its users; everything else is compiled with hidden visibility.
#define QUXML_EXPORT __attribute__((visibility("default")))

#endif
