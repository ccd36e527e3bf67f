#include "inspect/rows/Row.h"

#include <fmt/format.h>

namespace Bfri {

String hexText( U32 number ) { return fmt::format( "{:#010x}", number ); }

} // namespace Bfri
