#include "cli/grammar/ListTexts.h"

#include <cstddef>
#include <iterator>

namespace Bfri {

namespace {

constexpr char const* ofLeftOut =
    "The model has the match tables of a context file that are resource-controllable and have no static\n"
    "entries, with their actions. 'bfri check' names the others (BF409).\n\n";

constexpr char const* ofLeftOutQuantas =
    "The model has the learn quantas of a context file that have an \"lq_cfg_type\". 'bfri check' names\n"
    "the others (BF409).\n\n";

constexpr char const* ofNoParent =
    "A match table has no parent, and the model knows no parent of direct action data.\n\n";

/// In the order of the enumeration.
constexpr ListText texts[] = {
    { "The match tables", ofLeftOut },
    { "The hardware resources: their kind, direction, size and stages" },
    { "The counters, and the tables that they belong to" },
    { "The meters, and the tables that they belong to" },
    { "The WRED tables, and the tables that they belong to" },
    { "The registers, their cells, and the tables that they belong to" },
    { "The learn quantas", ofLeftOutQuantas },
    { "The actions of the match tables" },
    { "The flexible headers, and their bytes" },
    { "The dynamic hash calculations, and their fields" },
    { "The fields in the PHV, and the bytes that they take there" },
    { "Every placed table by handle, with what it references", ofNoParent },
};

static_assert( std::size( texts ) == static_cast<std::size_t>( Kind::handles ) + 1 );

} // namespace

ListText const& listTextOf( Kind kind ) { return texts[ static_cast<std::size_t>( kind ) ]; }

} // namespace Bfri
