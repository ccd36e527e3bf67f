#include "inspect/load/TableHandles.h"

#include "inspect/check/CheckContext.h"
#include "inspect/load/FileTables.h"

#include <algorithm>

namespace Bfri {

namespace {

/// With the handles as the model has them.
std::vector<FileTable> tablesOf( MissingHandle const& missing, String const& contextFile ) {
    std::vector<FileTable> tables;
    eachTable( contextFile, Detail::full, [ & ]( FileTable table ) {
        if( table.handle )
            *table.handle |= missing.pipeBits;
        for( FileReference& reference : table.references )
            reference.handle |= missing.pipeBits;
        tables.push_back( std::move( table ) );
    } );
    return tables;
}

/// The list of a table that the handle stands in; null for none.
FileReference const* listing( FileTable const& table, U32 handle ) {
    auto const found = std::find_if( table.references.begin(), table.references.end(),
                                     [ & ]( auto const& reference ) { return reference.handle == handle; } );
    return found == table.references.end() ? nullptr : &*found;
}

/// The tables that a rule is true of; null in place of those that are too many to show.
template<class Rule>
std::vector<FileTable const*> fewOf( std::vector<FileTable> const& tables, Rule rule ) {
    constexpr std::size_t most = 4;
    std::vector<FileTable const*> few;
    for( FileTable const& table : tables ) {
        if( few.size() <= most && rule( table ) )
            few.push_back( few.size() < most ? &table : nullptr );
    }
    return few;
}

/// `"a", "b", ...`
String namesOf( std::vector<FileTable const*> const& tables ) {
    String text;
    for( FileTable const* const table : tables )
        text += ( text.empty() ? "" : ", " ) + ( table ? '"' + table->name + '"' : "..." );
    return text;
}

/// Why a table that lists a handle is not found by it: it is not placed, or another has its own handle, too.
String whyHidden( FileTable const& lister, std::vector<FileTable> const& tables ) {
    if( lister.stageTables == 0 )
        return ", but has no stage table";
    auto const rivals = fewOf( tables, [ & ]( FileTable const& table ) {
        return &table != &lister && table.handle && table.handle == lister.handle;
    } );
    return rivals.empty() ? ""
                          : ", but its own handle " + hexOf( *lister.handle ) + " is also that of " +
                                namesOf( rivals ) + ", and the model keeps one of them";
}

} // namespace

String whoLists( MissingHandle const& missing, String const& contextFile ) {
    auto const tables = tablesOf( missing, contextFile );
    String text;
    for( FileTable const* const lister : fewOf( tables, [ & ]( FileTable const& table ) {
             return listing( table, missing.handle ) != nullptr;
         } ) )
        text += ( text.empty() ? "" : "; " ) +
                ( lister ? '"' + lister->name + "\" lists it in \"" +
                               listing( *lister, missing.handle )->list + '"' + whyHidden( *lister, tables )
                         : "..." );
    if( text.empty() )
        text = "no table that lists it";
    auto const bearers =
        fewOf( tables, [ & ]( FileTable const& table ) { return table.handle == missing.handle; } );
    return bearers.size() > 1 ? text + "; it is the handle of " + namesOf( bearers ) : text;
}

String whoHas( MissingHandle const& missing, String const& contextFile ) {
    auto const tables = tablesOf( missing, contextFile );
    auto const bearers =
        fewOf( tables, [ & ]( FileTable const& table ) { return table.handle == missing.handle; } );
    return bearers.empty() ? "no table with this handle"
                           : "this handle only with tables that are not placed: " + namesOf( bearers );
}

} // namespace Bfri
