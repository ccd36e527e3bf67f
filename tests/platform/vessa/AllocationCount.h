#pragma once

#include <cstddef>

/// How often this program has called the global operator new so far.
std::size_t allocationCount();
