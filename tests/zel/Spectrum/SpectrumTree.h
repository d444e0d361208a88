// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionDDC.h"
#include "IKWFunctionFFT.h"
#include "IKWFunctionSpectrum.h"
#include "IKWFunctionZEL.h"
#include "zel/ZelTree.h"

#include <gtest/gtest.h>

/** The groups of the spectrum function, in a tree of their own, and the reports meanwhile. */
struct t_SpectrumTree
{
    std::shared_ptr<IKWFunctionZEL> root = GetZELRoot();
    std::shared_ptr<IKWFunctionSpectrum> s = root->GetPgSpectrum();
    std::shared_ptr<IKWFunctionFFT> fft = root->GetPgFFT();
    std::shared_ptr<IKWFunctionDDC> ddc = root->GetPgDDC();
    CReports reports;
};

class SpectrumGroup : public testing::Test, protected t_SpectrumTree
{
};

/** What must hold of every state, by arithmetic of its own. Names what does not. */
std::string SpectrumViolations(const t_SpectrumTree& t);
