// SPDX-License-Identifier: MIT
#include "KWAcceptance.h"

#include <array>

QString KW_GetAcceptanceText(KW_ACCEPTANCE code)
{
    static const std::array<const char*, eKW_ACC_COUNT> texts{
        "taken",
        "taken, but limited, rounded or moved by a rule",
        "below the minimum",
        "above the maximum",
        "not a number",
        "not in the value list",
        "no such value",
        "this value can not be selected now",
        "the name stands for several values",
        "the text can not be read as a value",
        "too long",
        "the minimum would lie above the maximum",
        "a limit would leave the declared range",
        "read only",
        "not available",
        "no write access: the instrument is under remote control",
        "the node is not part of a tree",
        "no such index",
        "not a valid name",
        "the name or key is in use",
        "not found",
        "the container is full",
        "the items of the container are fixed",
        "a size can not be reduced",
        "nothing to undo or redo",
        "not possible within a transaction",
        "the file can not be read",
        "the file can not be written",
        "the file was not understood",
        "not possible for this kind of node",
        "the operation did not end in time",
        "the operation ended with another result",
        "internal error",
        "there is nothing to act on",
    };
    return code < eKW_ACC_COUNT ? QLatin1String(texts[code])
                                : QStringLiteral("unknown code %1").arg(code);
}
