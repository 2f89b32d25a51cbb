/* OviCore: a typed, versioned data model for 3D content. This header includes all others; start
 * with ovi/types.h, where the rules for all functions stand. */
#ifndef OVI_OVI_H
#define OVI_OVI_H

#include "ovi/asset.h"
#include "ovi/attribute_instance.h"
#include "ovi/attribute_property.h"
#include "ovi/enumeration.h"
#include "ovi/error_manager.h"
#include "ovi/geometry_property.h"
#include "ovi/instance.h"
#include "ovi/library.h"
#include "ovi/named_object.h"
#include "ovi/node_instance.h"
#include "ovi/node_property.h"
#include "ovi/notification_manager.h"
#include "ovi/object.h"
#include "ovi/property.h"
#include "ovi/template.h"
#include "ovi/template_manager.h"
#include "ovi/type.h"
#include "ovi/types.h"
#include "ovi/view.h"

#endif
