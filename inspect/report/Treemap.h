#pragma once

// A treemap of entries by dotted name: nested boxes, whose area is their share.

#include "inspect/report/Chip.h"

namespace Bfri {

struct Box {
    double x, y, width, height;
};

struct TreemapBox {
    enum class Is { program, control, path, resource, several } is;
    Box place;
    String label; ///< the part of the name that the box adds; empty for a resource
    std::uint64_t entries;
    ChipResource const* resource = nullptr;
    std::size_t several = 0; ///< resources that are too small to show, drawn as one
    bool hasLabel = false;   ///< a group with room for its label
};

struct Treemap {
    static constexpr double width = 1140, height = 520;
    std::vector<TreemapBox> boxes; ///< groups before their contents
    std::uint64_t entries = 0;
};

/// Of match tables, or of all resources.
Treemap treemapOf( Chip const& chip, bool all );

/// A box for each value. The values must descend and not be 0. Areas are shares of the whole, shapes as
/// square as possible. Linear.
std::vector<Box> squarified( std::vector<double> const& values, Box whole );

} // namespace Bfri
