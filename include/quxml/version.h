// SPDX-License-Identifier: MIT
#ifndef QUXML_VERSION_H
#define QUXML_VERSION_H

/// The one place that holds the version; the build system reads it from here.
#define QUXML_VERSION_MAJOR 1
#define QUXML_VERSION_MINOR 0
#define QUXML_VERSION_PATCH 0

#endif
