// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"
#include "Reports.h"
#include "faults/Allocations.h"

#include <array>
#include <charconv>
#include <cmath>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

/**
 * What the numeric functions answer to a spread of arguments, as lines of text that every platform
 * must agree on:
 *
 *     function slack argument … = result … ! report @ source function …
 *
 * Real numbers are hexadecimal ("1.8p+1"), NaN is "nan" whatever its sign, integers are decimal,
 * an empty text is "-". `slack` is the number of representable doubles that a result may be away
 * from: 0 wherever IEEE arithmetic alone decides, more where the logarithms, powers and cosines of
 * the C library take part, which every processor rounds in its own way. "unit" stands for 2^-50
 * absolutely, for sums of terms near 1 that cancel.
 */
namespace NVectors
{
constexpr const char kExact[] = "0";
constexpr const char kOneUlp[] = "1";
constexpr const char kTwoUlp[] = "2";
constexpr const char kFourUlp[] = "4";
constexpr const char kUnit[] = "unit";

inline std::string Text(const std::string& value)
{
    return value.empty() ? "-" : value;
}

template <typename T>
std::string Text(T value)
{
    if constexpr (std::is_same_v<T, bool>)
    {
        return value ? "true" : "false";
    }
    else if constexpr (std::is_enum_v<T>)
    {
        return Text(static_cast<INT64>(value));
    }
    else if constexpr (std::is_integral_v<T>)
    {
        return std::to_string(value);
    }
    else
    {
        char text[40];
        const auto end =
            std::to_chars(std::begin(text), std::end(text), value, std::chars_format::hex).ptr;
        return std::isnan(value) ? "nan" : std::string(text, end);
    }
}

template <typename T, std::size_t N>
std::string Text(const std::array<T, N>& values);

template <typename... T>
std::string Text(const std::tuple<T...>& values)
{
    std::string line;
    std::apply([&](const T&... value) { ((line += (line.empty() ? "" : " ") + Text(value)), ...); },
               values);
    return line;
}

template <typename T, std::size_t N>
std::string Text(const std::array<T, N>& values)
{
    return std::apply([](const auto&... value) { return Text(std::tuple(value...)); }, values);
}

using t_Lines = std::vector<std::string>;

/** What was reported, with where it says to come from. */
std::string Told(const CReports& reports);

/** Functions that allocate though they have nothing to report. */
std::set<std::string>& Allocating();

/** Adds the line of one call: function(arguments …). Where it calls several functions, it does so
   in braces, which alone say in which order. */
template <typename TFunction, typename... T>
void AddOne(t_Lines& lines, const char* name, const char* slack, const TFunction& function,
            const T&... arguments)
{
    const CReports reports;
    const std::string result = Text(function(arguments...));
    if (reports.Count() == 0)
    {
        // The second call: the first one may fill tables.
        if (KW_CountAllocations([&] { static_cast<void>(function(arguments...)); }) > 0)
            Allocating().insert(name);
    }
    lines.push_back(std::string(name) + " " + slack + " " + Text(std::tuple(arguments...)) + " = " +
                    result + Told(reports));
}

/** Calls with every combination of the values of lists, those of the last list fastest. */
template <typename TCall>
void Combine(const TCall& call)
{
    call();
}
template <typename TCall, typename T, typename... TMore>
void Combine(const TCall& call, const std::vector<T>& list, const TMore&... more)
{
    for (const T& value : list)
        Combine([&](const auto&... values) { call(value, values...); }, more...);
}
template <typename TCall, typename T, typename... TMore>
void Combine(const TCall& call, const T& value, const TMore&... more)
{
    Combine([&](const auto&... values) { call(value, values...); }, more...);
}

/** Adds the lines of a function; a vector among the arguments stands for each of its values. */
template <typename TFunction, typename... T>
void Add(t_Lines& lines, const char* name, const char* slack, const TFunction& function,
         const T&... arguments)
{
    Combine([&](const auto&... values) { AddOne(lines, name, slack, function, values...); },
            arguments...);
}

/** The whole numbers from `first` to `last`. */
std::vector<int> Range(int first, int last);

/** Zeros, ends and neighbours of the number types, infinities, NaN, denormals: what breaks a
    conversion or a comparison. */
const std::vector<double>& Edges();

/** Each value with the representable doubles below and above it. */
std::vector<double> AndNeighbours(const std::vector<double>& values);

/** `count` numbers of either sign, evenly over the exponents from `lowest` to `highest` of two; the
    same on every platform. */
std::vector<double> Scattered(int count, int lowest, int highest);

std::vector<double> Joined(std::vector<double> first, const std::vector<double>& second);

// One function for each family of calculations.
void AddMath(t_Lines& lines);
void AddFixedPoint(t_Lines& lines);
void AddTimebase(t_Lines& lines);
void AddVertical(t_Lines& lines);
void AddFFT(t_Lines& lines);
void AddDDC(t_Lines& lines);
void AddProbesAndMeter(t_Lines& lines);
void AddApplication(t_Lines& lines);
void AddUnits(t_Lines& lines);
void AddHarmonics(t_Lines& lines);
void AddLabels(t_Lines& lines);
void AddNumberTexts(t_Lines& lines);
void AddLimitsAndSteps(t_Lines& lines);
void AddCurves(t_Lines& lines);
} // namespace NVectors
