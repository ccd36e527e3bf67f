#include "inspect/check/RecordPlaces.h"

namespace Bfri {

RecordPlaces::RecordPlaces( Configuration const& configuration ) {
    for( Context::FileSurvey const& file : configuration.files ) {
        auto const addAll = [ & ]( auto const& elements ) {
            for( auto const& element : elements )
                add( file, element, element.name, element.handle );
        };
        addAll( file.tables );
        addAll( file.learnQuantas );
        addAll( file.headers );
        addAll( file.hashes );
        for( Context::SurveyedTable const& table : file.tables ) {
            for( Context::SurveyedAction const& action : table.actions )
                add( file, table, action.name, action.handle );
        }
    }
}

void RecordPlaces::add( Context::FileSurvey const& file, Context::SurveyedElement const& element,
                        std::string_view name, std::optional<U32> handle ) {
    byName_[ name ].push_back( { &file, &element, handle } );
}

std::optional<FindingPlace> RecordPlaces::of( Finding const& finding ) const {
    auto const found = byName_.find( finding.name );
    if( found == byName_.end() )
        return std::nullopt;
    Candidate const* best = nullptr;
    int most = -1;
    for( Candidate const& candidate : found->second ) {
        int const agreed = ( finding.handle && candidate.handle == finding.handle ? 2 : 0 ) +
                           ( candidate.file->path == finding.contextFile ? 1 : 0 );
        if( agreed > most ) {
            most = agreed;
            best = &candidate;
        }
    }
    return FindingPlace{ best->file->path, best->element->place };
}

} // namespace Bfri
