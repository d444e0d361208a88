// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionRootBase.h"

#include <QByteArray>
#include <cstdio>
#include <cstdlib>

/**
 * What the fuzzers of the service try, one function for each folder of tests/service/corpus:
 * KW_Try<folder>. Each takes any bytes and ends the program when what it promises does not hold.
 */

/** The bytes are what a client of remote control sends: messages are cut at the same places however
    the bytes come, every command leads to a bounded number of answers, and another client is
    answered afterwards. */
void KW_TryRemoteMessages(const QByteArray& bytes);

/** The bytes are lines, each a request in JSON and a message of a subscriber: every one is answered
   by an object, changes are told once, and no bracket stays open. */
void KW_TryJsonRequests(const QByteArray& bytes);

/** Ends the program, and says what does not hold for which bytes. */
inline void KW_Require(bool holds, const char* what, const QByteArray& bytes)
{
    if (!holds)
    {
        std::fprintf(stderr, "%s: %s\n", what, bytes.toPercentEncoding().constData());
        std::abort();
    }
}

/** A tree for one try, with a settings folder of its own; made by the program that tries. */
std::shared_ptr<IKWFunctionRootBase> KW_MakeServedTree();
