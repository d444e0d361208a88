// SPDX-License-Identifier: MIT
#include "JsonService.h"

t_JsonAnswer CJsonService::Try(const t_Call&) const
{
    return Refuse(501, eKW_ACC_NOT_AVAILABLE, QString());
}
