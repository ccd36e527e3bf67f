#pragma once

// Which records have which handles.

#include "inspect/model/RecordKinds.h"

#include <functional>

namespace Bfri {

/// A handle of a record. The texts are the model's and live as long.
struct HandleUse {
    U32 handle = 0;
    Kind kind = Kind::tables;   ///< of the record
    std::string_view name;      ///< of the record
    char const* field = "";     ///< of the record, that holds the handle; empty if none does
    std::string_view table;     ///< that the record belongs to; empty unless it is exactly one
    std::string_view owner;     ///< name of what the handle belongs to; empty if that is another record
    bool severalTables = false; ///< the record belongs to several
};

/// Calls `visit` with every handle of every record, kind by kind in the order of the recordKinds. If a
/// counter's handle is its own handle, it is visited once. The own handle of a direct meter, WRED table or
/// register is only in its resource; both have it.
void eachHandleUse( BfResourceParser const& parser, std::function<void( HandleUse const& )> const& visit );

/// The handle in a word, decimal, or hexadecimal with 0x; nothing for any other word.
std::optional<U32> handleIn( std::string_view word );

/// The handle in a word that only lacks its 0x.
std::optional<U32> handleBehind0x( std::string_view word );

/// The same if a record has it.
std::optional<U32> handleWithout0x( BfResourceParser const& parser, std::string_view word );

} // namespace Bfri
