#include "cli/TableHandles.h"

#include "cli/ContextText.h"
#include "cli/Facts.h"

#include <algorithm>

#include <rapidjson/reader.h>

namespace Bfri {

namespace {

/// A table of a context file: its name, its handle, and the member, if any, that lists the missing one.
struct Table {
    String name = {};
    std::optional<U32> handle = {};
    String listing = {};
};

/// Takes the tables from the events of a section "tables".
class TableReader : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TableReader> {
  public:
    TableReader( MissingHandle const& missing, std::vector<Table>& tables )
        : missing_( missing ), tables_( tables ) {}

    bool Default() { return true; }
    bool StartObject() {
        if( ++depth_ == ofTable )
            tables_.emplace_back();
        return true;
    }
    bool StartArray() {
        ++depth_;
        return true;
    }
    bool EndObject( rapidjson::SizeType ) {
        --depth_;
        return true;
    }
    bool EndArray( rapidjson::SizeType ) {
        --depth_;
        return true;
    }
    bool Key( char const* name, rapidjson::SizeType length, bool ) {
        if( depth_ == ofTable )
            member_.assign( name, length );
        isHandle_ = std::string_view( name, length ) == "handle";
        return true;
    }
    bool String( char const* text, rapidjson::SizeType length, bool ) {
        if( depth_ == ofTable && member_ == "name" )
            tables_.back().name.assign( text, length );
        return true;
    }
    bool Uint( unsigned number ) {
        U32 const handle = number | missing_.pipeBits;
        if( isHandle_ && depth_ == ofTable )
            tables_.back().handle = handle;
        else if( isHandle_ && depth_ == ofReference && handle == missing_.handle &&
                 member_.ends_with( "_table_refs" ) )
            tables_.back().listing = member_;
        return true;
    }

  private:
    static constexpr std::size_t ofTable = 2;     // in the array
    static constexpr std::size_t ofReference = 4; // in an array of the table

    MissingHandle const missing_;
    std::vector<Table>& tables_;
    std::size_t depth_ = 0; // of open containers
    Vessa::String member_;  // of a table, whose value comes
    bool isHandle_ = false; // the member whose value comes
};

std::vector<Table> tablesOf( MissingHandle const& missing, String const& contextFile ) {
    constexpr std::string_view section[] = { "tables" };
    std::vector<Table> tables;
    ContextText text( contextFile );
    while( text.skipToName( section ) == 0 ) {
        TableReader reader( missing, tables );
        rapidjson::Reader().Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseStopWhenDoneFlag>(
            text, reader );
    }
    return tables;
}

/// The tables that a rule is true of; null in place of those that are too many to show.
template<class Rule>
std::vector<Table const*> fewOf( std::vector<Table> const& tables, Rule rule ) {
    constexpr std::size_t most = 4;
    std::vector<Table const*> few;
    for( Table const& table : tables ) {
        if( few.size() <= most && rule( table ) )
            few.push_back( few.size() < most ? &table : nullptr );
    }
    return few;
}

/// `"a", "b", ...`
String namesOf( std::vector<Table const*> const& tables ) {
    String text;
    for( Table const* const table : tables )
        text += ( text.empty() ? "" : ", " ) + ( table ? '"' + table->name + '"' : "..." );
    return text;
}

/// Whose handle a table has, too.
String rivalsOf( Table const& lister, std::vector<Table> const& tables ) {
    auto const rivals = fewOf( tables, [ & ]( Table const& table ) {
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
    for( Table const* const lister :
         fewOf( tables, []( Table const& table ) { return !table.listing.empty(); } ) )
        text +=
            ( text.empty() ? "" : "; " ) + ( lister ? '"' + lister->name + "\" lists it in \"" +
                                                          lister->listing + '"' + rivalsOf( *lister, tables )
                                                    : "..." );
    if( text.empty() )
        text = "no table that lists it";
    auto const bearers =
        fewOf( tables, [ & ]( Table const& table ) { return table.handle == missing.handle; } );
    return bearers.size() > 1 ? text + "; it is the handle of " + namesOf( bearers ) : text;
}

String whoHas( MissingHandle const& missing, String const& contextFile ) {
    auto const bearers = fewOf( tablesOf( missing, contextFile ),
                                [ & ]( Table const& table ) { return table.handle == missing.handle; } );
    return bearers.empty() ? "no table with this handle"
                           : "this handle only with tables that are not placed: " + namesOf( bearers );
}

} // namespace Bfri
