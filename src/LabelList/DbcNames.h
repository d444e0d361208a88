// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/** Names in CAN databases, which are identifiers of C with up to 32 characters. Others stand in an
    attribute, and a short name in their place. */
namespace NDbcNames
{
/** Stands for a node where there is none. */
constexpr std::string_view kNobody = "Vector__XXX";

constexpr std::size_t kLongest = 32;

/** Letters, digits and "_", no digit first, of any length. */
bool IsIdentifier(std::string_view name);

/** Whether a CAN database can have the name as it is. */
bool IsPlain(std::string_view name);

struct t_Named
{
    std::string_view name;
    std::string_view shortName; ///< empty: the name itself
};

/**
 * What the file has for each of several names: the short name where there is one that no other
 * before has, else the name where it is plain, else a name made of it that none of the others has.
 * Plain names that are there twice stay so.
 */
std::vector<std::string> InFile(std::span<const t_Named> names);
} // namespace NDbcNames
