// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionDDC.h"
#include "IKWFunctionFFT.h"
#include "IKWFunctionSpectrum.h"
#include "IKWFunctionZEL.h"
#include "ZelTree.h"

#include <gtest/gtest.h>
#include <random>

/** The groups of the spectrum function, in a tree of their own, and the reports meanwhile. */
struct t_SpectrumTree
{
    std::shared_ptr<IKWFunctionZEL> root = GetZELRoot();
    std::shared_ptr<IKWFunctionSpectrum> s = root->GetPgSpectrum();
    std::shared_ptr<IKWFunctionFFT> fft = root->GetPgFFT();
    std::shared_ptr<IKWFunctionDDC> ddc = root->GetPgDDC();
    CZelReports reports;
};

class SpectrumGroup : public testing::Test, protected t_SpectrumTree
{
};

/** What must hold of every state, by arithmetic of its own. Names what does not. */
QStringList SpectrumViolations(const t_SpectrumTree& t);

/** Numbers that are the same on every machine for a seed. */
class CDice
{
public:
    explicit CDice(UINT32 seed) : m_engine(seed) {}
    double Share() { return static_cast<double>(m_engine()) / 4294967295.0; }
    INT32 Below(INT32 count) { return static_cast<INT32>(m_engine() % static_cast<UINT32>(count)); }
    double Logarithmic(double min, double max);

private:
    std::mt19937 m_engine;
};

/** One write, mostly legal, as a client could do it anywhere in the spectrum function. */
void WriteAnything(const t_SpectrumTree& t, CDice& dice);
