# SPDX-License-Identifier: MIT
SUMMARY = "Small XML document object model"
DESCRIPTION = "quxml holds XML documents in memory as trees: it reads them, finds nodes by paths, changes them, \
and writes them as compact or indented text."
SECTION = "libs"
LICENSE = "MIT"
LIC_FILES_CHKSUM = "file://LICENSE;md5=c80f87bf91445fc995a7ff45081fc88d"

# The archive is in a folder `files` beside this recipe; README.md in the folder above says how to make it.
SRC_URI = "file://${BP}.tar.gz"

DEPENDS = "libxml2"

inherit cmake pkgconfig

EXTRA_OECMAKE = "\
    -DBUILD_SHARED_LIBS=ON \
    -DCMAKE_SKIP_INSTALL_RPATH=ON \
    -DQUXML_BUILD_EXAMPLES=OFF \
    -DQUXML_BUILD_TESTS=OFF \
"

# The companion library for developers: a static library in the package for static development, and headers.
PACKAGECONFIG ??= ""
PACKAGECONFIG[extras] = "-DQUXML_EXTRAS=ON,-DQUXML_EXTRAS=OFF"
# The program `quxml`; cli11 is a recipe of the layer meta-oe.
PACKAGECONFIG[tool] = "-DQUXML_BUILD_TOOLS=ON,-DQUXML_BUILD_TOOLS=OFF,cli11"

PACKAGES =+ "${PN}-tool"
FILES:${PN}-tool = "${bindir}/quxml ${datadir}/bash-completion ${datadir}/zsh"
# The script that shows trees in gdb.
FILES:${PN}-dev += "${datadir}/gdb ${datadir}/quxml"

BBCLASSEXTEND = "native nativesdk"
