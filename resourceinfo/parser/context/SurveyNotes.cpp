#include "resourceinfo/parser/context/SurveyNotes.h"

#include "resourceinfo/parser/context/MemberNames.h"

namespace Context {

void SurveyNotes::readsFrom( GZFileReadStream& stream ) {
    stream_ = &stream;
    stream.linesAre( &lines_ );
}

/// No line ends between the first and the last character of a token.
Place SurveyNotes::placeOf( std::size_t offset ) {
    lines_.countTo( stream_->taken() );
    return lines_.placeOf( offset );
}

void SurveyNotes::member( std::string_view name ) {
    Level& object = levels_.back();
    std::uint64_t const bit = std::uint64_t{ 1 } << memberNameTable.positionOf( name );
    object.member = name;
    if( !isInDuplicate() && ( object.members & bit ) ) {
        duplicates_.push_back( { pointer(), placeOf( stream_->tokenStart() ) } );
        duplicateLevel_ = levels_.size();
    }
    object.members |= bit;
}

void SurveyNotes::valueStarts( bool isContainer ) {
    if( levels_.empty() )
        return;
    Level& around = levels_.back();
    if( around.isArray )
        ++around.elements;
    if( levels_.size() == 2 && around.isArray && !isInDuplicate() ) {
        Place const place = isContainer ? placeOf( stream_->Tell() - 1 ) : Place();
        lists_[ levels_.front().member ].push_back( { place } );
    }
    if( !isContainer && duplicateLevel_ == levels_.size() )
        duplicateLevel_ = 0;
}

void SurveyNotes::containerStarts( bool isArray ) {
    valueStarts( true );
    levels_.push_back( { isArray } );
}

void SurveyNotes::containerEnds() {
    levels_.pop_back();
    if( duplicateLevel_ == levels_.size() )
        duplicateLevel_ = 0;
}

void SurveyNotes::staticEntriesEnd( std::uint64_t count ) {
    // "/tables/3/static_entries": the object with the member is an element of a list.
    if( levels_.size() == 4 && levels_[ 1 ].isArray && !isInDuplicate() )
        lists_[ levels_.front().member ].back().staticEntries = count;
    containerEnds();
}

SurveyNotes::Elements const& SurveyNotes::elementsOf( std::string_view list ) const {
    static Elements const none;
    auto const found = lists_.find( list );
    return found == lists_.end() ? none : found->second;
}

String SurveyNotes::pointer() const {
    String text; // no name of ours needs to be escaped
    for( Level const& level : levels_ )
        text.append( "/" ).append( level.isArray ? std::to_string( level.elements - 1 )
                                                 : String( level.member ) );
    return text;
}

} // namespace Context
