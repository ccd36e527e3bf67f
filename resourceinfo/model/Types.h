#pragma once

#include "vessa/Types.h"

using Vessa::String;
using Vessa::U16;
using Vessa::U32;
using Vessa::U8;
