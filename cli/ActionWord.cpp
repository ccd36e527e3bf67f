#include "cli/ActionWord.h"

#include "cli/Names.h"

namespace Bfri {

String ActionWord::tableMeant( std::vector<String> const& tables ) const {
    return meantName( tables, table, { "table with this action", "tables", "actions" } );
}

std::optional<ActionWord> actionWordOf( String const& word ) {
    constexpr std::string_view between = " of ";
    auto const place = word.rfind( between );
    if( place == String::npos )
        return std::nullopt;
    return ActionWord{ word.substr( 0, place ), word.substr( place + between.size() ) };
}

} // namespace Bfri
