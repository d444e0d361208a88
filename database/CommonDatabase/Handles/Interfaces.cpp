// SPDX-License-Identifier: MIT
// Destructors of the client interfaces: one home for their virtual tables and type information.
#include "IDbObject.h"
#include "IKWFunctionRootBase.h"
#include "IKWProperties.h"

IDbObject::~IDbObject() = default;
IDbProperty::~IDbProperty() = default;
IDbAction::~IDbAction() = default;
IDbGroup::~IDbGroup() = default;
IDbContainer::~IDbContainer() = default;

IKWPropertyBase::~IKWPropertyBase() = default;
IKWEnumPropertyBase::~IKWEnumPropertyBase() = default;
IKWStringProperty::~IKWStringProperty() = default;
IKWBitPatternProperty::~IKWBitPatternProperty() = default;
IKWBlobProperty::~IKWBlobProperty() = default;
IKWFilePathProperty::~IKWFilePathProperty() = default;
IKWReferenceProperty::~IKWReferenceProperty() = default;
IKWAction::~IKWAction() = default;
IKWOperation::~IKWOperation() = default;

IKWFunctionBase::~IKWFunctionBase() = default;
IKWArrayBase::~IKWArrayBase() = default;
IKWMapItem::~IKWMapItem() = default;
IKWMapBase::~IKWMapBase() = default;
IKWFunctionRootBase::~IKWFunctionRootBase() = default;
