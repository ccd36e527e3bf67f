#include "tests/support/TraceCollector.h"

#include <algorithm>

namespace Support {

TraceCollector::TraceCollector( std::string const& source, std::initializer_list<Zel::U32> levels )
    : handle_( Zel::TraceHandle::byName( source ) ),
      formerSink_(
          Zel::traceSinkIs( [ this ]( Zel::TraceLine const& line ) { lines_.push_back( line ); } ) ) {
    for( Zel::U32 level = 0; level < Zel::TraceHandle::levels; ++level ) {
        formerLevels_[ level ] = handle_.levelOn( level );
        handle_.levelIs( level, std::find( levels.begin(), levels.end(), level ) != levels.end() );
    }
}

TraceCollector::~TraceCollector() {
    for( Zel::U32 level = 0; level < Zel::TraceHandle::levels; ++level )
        handle_.levelIs( level, formerLevels_[ level ] );
    Zel::traceSinkIs( std::move( formerSink_ ) );
}

std::vector<std::string> TraceCollector::texts() const {
    std::vector<std::string> result;
    for( Zel::TraceLine const& line : lines_ )
        result.push_back( line.text );
    return result;
}

} // namespace Support
