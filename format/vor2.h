#pragma once

/// The whole of the library.

#include "format/core/paths.h"
#include "format/geometry/tri_clipper.h"
#include "format/scene/array_lengths.h"
#include "format/scene/root.h"
#include "format/tracks/tracks.h"
