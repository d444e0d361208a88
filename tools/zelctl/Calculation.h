// SPDX-License-Identifier: MIT
#pragma once

#include "Figures.h"
#include "KWEnumerationsUnits.h"

#include <limits>
#include <map>
#include <string>
#include <vector>

namespace CLI
{
class App;
}

/** What a calculation takes beside its name. */
struct t_Argument
{
    enum class eTAKES
    {
        Value,
        Flag, ///< an option without a value
        List  ///< any number of values
    };

    const char* name; ///< begins with "--" for an option, else the argument goes by its place
    const char* brief;
    const char* preset = nullptr; ///< none: must be given; "": may be left out
    eTAKES takes = eTAKES::Value;
};

/** A whole number from 0 to `most`; fails for any other text. `name` is what the help calls it. */
double ReadWhole(const std::string& text, KW_UNIT unit, const QString& name, double most);

/** The arguments of one calculation as they were written, read by name in the unit that the
    calculation needs. Reading fails for what can not be meant. */
class CArguments
{
public:
    /** Binds the arguments to a command's words. */
    void Declare(CLI::App& command, const std::vector<t_Argument>& arguments);
    /** Sets all to what they are when nothing is written. */
    void Reset(const std::vector<t_Argument>& arguments);

    bool Has(const char* name) const { return !Text(name).empty(); }
    bool IsSet(const char* flag) const { return m_flags.at(flag); }
    const std::string& Text(const char* name) const { return m_texts.at(name); }
    const std::vector<std::string>& List(const char* name) const { return m_lists.at(name); }
    double Number(const char* name, KW_UNIT unit = eKW_UNIT_NONE) const;
    template <typename T>
    T Enum(const char* name) const
    {
        return ReadEnum<T>(QString::fromStdString(Text(name)),
                           GetStaticEnumNameInfo<T>().GetType());
    }
    /** A whole number from 0 on that the type holds. */
    template <typename T>
    T Whole(const char* name, KW_UNIT unit = eKW_UNIT_NONE) const
    {
        return static_cast<T>(
            Whole(name, unit, static_cast<double>(std::numeric_limits<T>::max())));
    }
    double Whole(const char* name, KW_UNIT unit, double most) const;

private:
    std::map<std::string, std::string> m_texts;
    std::map<std::string, std::vector<std::string>> m_lists;
    std::map<std::string, bool> m_flags;
};

/** A command of "calc": one or several functions of the library that belong together. */
struct t_Calculation
{
    const char* name;
    const char* brief;
    std::vector<const char*> functions; ///< functions of the library that `run` calls
    std::vector<t_Argument> arguments;
    void (*run)(const CArguments& arguments, CFigures& figures);
    std::vector<const char*> examples; ///< arguments that are worth showing
};

/** Calculations of one heading in the help. */
struct t_CalculationGroup
{
    const char* heading;
    std::vector<t_Calculation> calculations;
};

t_CalculationGroup GetChannelCalculations();
t_CalculationGroup GetTimebaseCalculations();
t_CalculationGroup GetVerticalCalculations();
t_CalculationGroup GetSpectrumCalculations();
t_CalculationGroup GetDownConverterCalculations();
t_CalculationGroup GetProbeCalculations();
t_CalculationGroup GetMeterCalculations();
t_CalculationGroup GetLabelCalculations();

/** "window": a row of the spectrum calculations in a file of its own. */
t_Calculation GetWindowCalculation();
