// The engine's time search. The class lives with the chart, since sunrise
// and sunset rest on it too; the engine reaches it here.
#pragma once

#include "ranvel/chart/gochara.h"
