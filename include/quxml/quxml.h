// SPDX-License-Identifier: MIT
#ifndef QUXML_QUXML_H
#define QUXML_QUXML_H

// Everything at once. In the order in which a newcomer reads them:
#include "Document.h"
#include "Node.h"

#include "Attribute.h"
#include "Element.h"
#include "TextNode.h"

#include "DomParserError.h"
#include "XPathHelper.h"
#include "version.h"

#endif
