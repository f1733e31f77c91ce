#pragma once

/// The whole of the library.

#include "format/core/entity.h"
#include "format/scene/array_lengths.h"
#include "format/scene/root.h"
#include "format/tracks/tracks.h"
