# SPDX-License-Identifier: MIT

################################################################################
#
# quxml
#
################################################################################

QUXML_VERSION = 1.0.0
QUXML_SITE = $(TOPDIR)/../quxml
QUXML_SITE_METHOD = local
QUXML_LICENSE = MIT
QUXML_LICENSE_FILES = LICENSE
QUXML_INSTALL_STAGING = YES
QUXML_SUPPORTS_IN_SOURCE_BUILD = NO
QUXML_DEPENDENCIES = libxml2
QUXML_CONF_OPTS = \
	-DQUXML_BUILD_EXAMPLES=OFF \
	-DQUXML_BUILD_TESTS=OFF

ifeq ($(BR2_PACKAGE_QUXML_EXTRAS),y)
QUXML_CONF_OPTS += -DQUXML_EXTRAS=ON
else
QUXML_CONF_OPTS += -DQUXML_EXTRAS=OFF
endif

ifeq ($(BR2_PACKAGE_QUXML_TOOL),y)
QUXML_DEPENDENCIES += cli11
QUXML_CONF_OPTS += -DQUXML_BUILD_TOOLS=ON
else
QUXML_CONF_OPTS += -DQUXML_BUILD_TOOLS=OFF
endif

$(eval $(cmake-package))
