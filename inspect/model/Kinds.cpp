#include "inspect/model/Kinds.h"

#include <unordered_set>

namespace Bfri {

std::vector<NameOfKind> namesOfKinds( BfResourceInfo::BfResourceParser const& parser ) {
    std::vector<NameOfKind> names;
    for( RecordKind const& kind : recordKinds() ) {
        std::unordered_set<String> seen;
        for( Row const& row : kind.rows( parser ) ) {
            String const& name = valueAs<String>( row, "name" );
            if( seen.insert( name ).second )
                names.push_back( { name, &kind } );
        }
    }
    return names;
}

RecordKind const* kindOf( std::string_view word ) {
    auto const kinds = recordKinds();
    auto const found = std::find_if( kinds.begin(), kinds.end(), [ & ]( RecordKind const& kind ) {
        return word == kind.word || word == kind.one;
    } );
    return found == kinds.end() ? nullptr : &*found;
}

} // namespace Bfri
