#ifndef BRINDLE_COMPAT_OPENNURBS_H
#define BRINDLE_COMPAT_OPENNURBS_H

// The openNURBS 8 types and functions this project uses, source compatible with the SDK:
// client code includes only this header and builds unchanged against either.

#include "opennurbs_array.h"
#include "opennurbs_bounding_box.h"
#include "opennurbs_color.h"
#include "opennurbs_defines.h"
#include "opennurbs_line.h"
#include "opennurbs_mesh.h"
#include "opennurbs_object.h"
#include "opennurbs_plane.h"
#include "opennurbs_point.h"
#include "opennurbs_point_array.h"
#include "opennurbs_string.h"

#endif
