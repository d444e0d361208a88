// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

/** What a property means, in one sentence of the model. */
struct t_Brief
{
    const char* path; ///< "[n]" stands for any item of an array or map
    const char* text; ///< UTF-8
};

/** All properties of the model in byte-wise order of their paths. */
const std::vector<t_Brief>& GetBriefs();
