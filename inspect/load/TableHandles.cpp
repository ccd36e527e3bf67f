#include "inspect/load/TableHandles.h"

#include "inspect/rows/Row.h"
#include "inspect/rows/Utf8.h"

#include <algorithm>

namespace Bfri {

namespace {

using Context::SurveyedTable;
using Tables = std::vector<SurveyedTable>;

/// The list of a table that has the handle; null for none.
Context::SurveyedReference const* listing( SurveyedTable const& table, U32 handle ) {
    auto const found = std::find_if( table.references.begin(), table.references.end(),
                                     [ & ]( auto const& reference ) { return reference.handle == handle; } );
    return found == table.references.end() ? nullptr : &*found;
}

/// The tables that a rule is true of; null in place of those that are too many to show.
template<class Rule>
std::vector<SurveyedTable const*> fewOf( Tables const& tables, Rule rule ) {
    constexpr std::size_t most = 4;
    std::vector<SurveyedTable const*> few;
    for( SurveyedTable const& table : tables ) {
        if( few.size() <= most && rule( table ) )
            few.push_back( few.size() < most ? &table : nullptr );
    }
    return few;
}

/// `"a", "b", ...`
String namesOf( std::vector<SurveyedTable const*> const& tables ) {
    String text;
    for( SurveyedTable const* const table : tables )
        text += ( text.empty() ? "" : ", " ) + ( table ? '"' + table->name + '"' : "..." );
    return text;
}

/// Why a table that lists a handle is not found by it: it is not placed, or another has its own handle, too.
String whyHidden( SurveyedTable const& lister, Tables const& tables ) {
    if( lister.stageTables.empty() )
        return ", but has no stage table";
    auto const rivals = fewOf( tables, [ & ]( SurveyedTable const& table ) {
        return &table != &lister && table.handle && table.handle == lister.handle;
    } );
    return rivals.empty() ? ""
                          : ", but its own handle " + hexText( *lister.handle ) + " is also that of " +
                                namesOf( rivals ) + ", and the model keeps one of them";
}

} // namespace

String whoLists( U32 missing, Tables const& tables ) {
    String text;
    for( SurveyedTable const* const lister : fewOf(
             tables, [ & ]( SurveyedTable const& table ) { return listing( table, missing ) != nullptr; } ) )
        text += ( text.empty() ? "" : "; " ) +
                ( lister ? '"' + lister->name + "\" lists it in \"" + listing( *lister, missing )->list +
                               '"' + whyHidden( *lister, tables )
                         : "..." );
    if( text.empty() )
        text = "no table that lists it";
    auto const bearers =
        fewOf( tables, [ & ]( SurveyedTable const& table ) { return table.handle == missing; } );
    return bearers.size() > 1 ? text + "; it is the handle of " + namesOf( bearers ) : text;
}

String whoHas( U32 missing, Tables const& tables ) {
    auto const bearers =
        fewOf( tables, [ & ]( SurveyedTable const& table ) { return table.handle == missing; } );
    return bearers.empty() ? "no table with this handle"
                           : "this handle only with tables that are not placed: " + namesOf( bearers );
}

} // namespace Bfri
