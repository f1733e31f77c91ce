#include "headless/graph/scene.h"
