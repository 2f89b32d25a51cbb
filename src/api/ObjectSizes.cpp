// Objects of every class fit into the blocks for objects.

#include "core/BlockPool.h"
#include "core/ErrorItem.h"
#include "instances/AnchorInstance.h"
#include "instances/Asset.h"
#include "instances/GeometryInstance.h"
#include "schema/AnchorProperty.h"
#include "schema/Command.h"
#include "schema/GeometryAlternate.h"
#include "schema/GeometryProperty.h"
#include "schema/LOD.h"
#include "schema/Template.h"
#include "schema/View.h"
#include "schema/ViewProperty.h"
#include "types/BoolType.h"
#include "types/CustomType.h"
#include "types/Enumeration.h"
#include "types/EnumerationItem.h"
#include "types/FloatType.h"
#include "types/IntType.h"
#include "types/StringType.h"

namespace Kor {

namespace {

template <class... Classes> constexpr bool Fit() {
    return ((sizeof(Classes) <= BlockPool::kLargestObject) && ...);
}

static_assert(Fit<ErrorItem, Command, LOD, View, ViewProperty>(), "a block is too small");
static_assert(Fit<BoolType, CustomType, Enumeration, EnumerationItem, StringType, Template>(),
              "a block is too small");
static_assert(Fit<FloatType<double>, IntType<long long>>(), "a block is too small");
static_assert(Fit<AnchorProperty, GeometryProperty, GeometryAlternate>(), "a block is too small");
static_assert(Fit<Instance, Asset, AnchorInstance, GeometryInstance>(), "a block is too small");

} // namespace

} // namespace Kor
