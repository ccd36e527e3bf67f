#pragma once

// Which records bear which handles.

#include "inspect/model/Kinds.h"
#include "resourceinfo/parser/BfResourceParser.h"

#include <functional>
#include <optional>
#include <string_view>

namespace Bfri {

/// A handle that a record bears. The texts are the model's and live as long.
struct HandleUse {
    U32 handle = 0;
    Kind kind = Kind::tables; ///< of the record
    std::string_view name;    ///< of the record
    char const* field = "";   ///< of the record, that holds the handle; empty where none does
    std::string_view table;   ///< that the record belongs to; empty without just one
    std::string_view owner;   ///< name of what has the handle as its own; empty where it is another record's
    bool severalTables = false; ///< the record belongs to several
};

/// Every handle of every record, kind after kind in the order of the recordKinds. Of a counter whose handle
/// is its own, that once. The handle of a direct meter, WRED table or register is its resource's alone, and
/// both bear it.
void eachHandleUse( BfResourceInfo::BfResourceParser const& parser,
                    std::function<void( HandleUse const& )> const& visit );

/// The handle that a word stands for, decimal or hexadecimal behind 0x; nothing for any other word.
std::optional<U32> handleIn( std::string_view word );

/// The handle that a word stands for when all that it lacks is the 0x.
std::optional<U32> handleBehind0x( std::string_view word );

/// The same where a record bears it.
std::optional<U32> handleWithout0x( BfResourceInfo::BfResourceParser const& parser, std::string_view word );

} // namespace Bfri
