// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>

/** How far one connection of remote control may go. */
struct t_RemoteBounds
{
    std::size_t message = 4U << 20U; ///< bytes of one message
    std::size_t answers = 4U << 20U; ///< bytes waiting to be sent, from which on nothing is read
    std::size_t queued = 1U << 20U;  ///< bytes of whole messages waiting for an operation to end
    std::size_t errors = 32;         ///< entries of the error queue
    int depth = 32;                  ///< words of a header
    int parameters = 64;             ///< of one command
    int operations = 8;              ///< that run at once
    int turn = 2;                    ///< milliseconds after which other connections have their turn
};

/** How far clients of HTTP and WebSocket may go. */
struct t_HttpBounds
{
    std::size_t header = 16U << 10U;    ///< bytes of a request's head
    std::size_t body = 1U << 20U;       ///< bytes of a request's body
    std::size_t connections = 256;      ///< that are open at once; further ones are closed
    std::size_t tasks = 64;             ///< requests that take their time, at once
    std::chrono::seconds request{30};   ///< in which a whole request must have come
    std::chrono::seconds answer{30};    ///< for which a client may leave answers unread
    std::chrono::seconds linger{2};     ///< for what a refused client still sends
    int writes = 256;                   ///< of one request, which may be one transaction
    int paths = 64;                     ///< of one subscription
    std::size_t message = 64U << 10U;   ///< bytes of a message of a subscriber
    std::size_t backlog = 8U << 20U;    ///< bytes of changes that can be asked for again
    std::chrono::seconds trial{2};      ///< for which a trial waits for others
    std::chrono::seconds memory{60};    ///< for which changes are kept without a subscriber
    std::chrono::seconds silence{60};   ///< after which a subscriber must have answered a ping
    std::chrono::milliseconds poll{50}; ///< between two looks at the change counters, and pictures
    int columns = 4096;                 ///< of a picture
    std::size_t viewers = 16;           ///< of pictures, at once
};

/** How far all clients together may go, and the service itself. */
namespace NServiceLimits
{
constexpr int kLongestWord = 64;            ///< of a header: long forms are names of nodes
constexpr std::size_t kTasks = 64;          ///< operations and functions that run at once
constexpr int kAddresses = 16;              ///< to listen at
constexpr int kNetworks = 64;               ///< that are allowed
constexpr std::size_t kShortestToken = 16;  ///< characters
constexpr std::size_t kLongestToken = 1024; ///< characters
constexpr int kLongestFileName = 255;       ///< bytes of a name that a client gives
constexpr int kEntriesLookedAt = 4096;      ///< of a folder, to list its files
constexpr int kFilesListed = 256;           ///< names of one list
constexpr int kLargestPanelFile = 8 << 20;  ///< bytes of one that is read from a folder
constexpr int kPauseMilliseconds = 100;     ///< before accepting again when the system refused
constexpr int kPollMilliseconds = 50;       ///< between two looks at what has changed
/** A connection that is silent is asked whether it lives: after how long, how often, how many times
    in vain. */
///@{
constexpr int kAliveAfterSeconds = 60;
constexpr int kAliveEverySeconds = 10;
constexpr int kAliveTries = 6;
///@}
} // namespace NServiceLimits
