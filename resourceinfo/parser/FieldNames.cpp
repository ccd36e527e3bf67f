#include "resourceinfo/parser/BfResourceParser.h"

#include <algorithm>

namespace BfResourceInfo {

namespace {

bool isDigit( char c ) { return c >= '0' && c <= '9'; }

} // namespace

String BfResourceParser::normalizeFieldName( String const& name ) const {
    String normalized;
    normalized.reserve( name.size() );
    for( auto c = name.begin(); c != name.end(); ) {
        char const character = *c++;
        if( character == '$' && c != name.end() && isDigit( *c ) ) {
            c = std::find_if_not( c, name.end(), isDigit );
            normalized += "_1_"; // whatever the number
        } else {
            normalized += character == '.' || character == '[' || character == ']' ? '_' : character;
        }
    }
    return normalized;
}

} // namespace BfResourceInfo
