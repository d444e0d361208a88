// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/** Whether a tag has more than that many attributes. Looks before Qt's reader does, which compares
    each attribute of a tag with all before it: a tag of some 100,000 would keep it busy for
    minutes. What is not well-formed is left to it. */
bool KW_HasLongXmlTag(const QByteArray& text, int maxAttributes);
