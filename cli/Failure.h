#pragma once

#include "cli/grammar/Failure.h"
