#include "inspect/budget/Rules.h"

#include "inspect/model/Records.h"

#include <algorithm>

namespace Bfri {

char const* wordOf( RuleLevel level ) {
    return level == RuleLevel::error ? "error" : level == RuleLevel::warn ? "warn" : "off";
}

char const* wordOf( RuleKind kind ) {
    static constexpr char const* words[] = { "chip", "capacity", "table", "program", "growth" };
    return words[ static_cast<std::size_t>( kind ) ];
}

bool CapacityRule::isFor( StageGroup const& group ) const {
    return ( !ingress || *ingress == group.ingress ) &&
           matches( type, typeNameOf( *group.resources.front().resource ) );
}

bool CapacityRule::isFor( Stage stage ) const {
    return stages.empty() || std::ranges::binary_search( stages, stage );
}

bool isPattern( std::string_view text ) { return text.find_first_of( "*?" ) != text.npos; }

bool matches( std::string_view pattern, std::string_view text ) {
    std::size_t inPattern = 0;
    std::size_t inText = 0;
    std::size_t star = pattern.npos; // the last one, and where its text ends so far
    std::size_t end = 0;
    while( inText < text.size() ) {
        if( inPattern < pattern.size() && pattern[ inPattern ] == '*' ) {
            star = inPattern++;
            end = inText;
        } else if( inPattern < pattern.size() &&
                   ( pattern[ inPattern ] == '?' || pattern[ inPattern ] == text[ inText ] ) ) {
            ++inPattern;
            ++inText;
        } else if( star != pattern.npos ) {
            inPattern = star + 1;
            inText = ++end;
        } else
            return false;
    }
    return pattern.find_first_not_of( '*', inPattern ) == pattern.npos;
}

} // namespace Bfri
