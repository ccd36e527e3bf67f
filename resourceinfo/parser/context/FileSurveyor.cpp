#include "resourceinfo/parser/context/FileSurveyor.h"

#include "resourceinfo/parser/context/Actions.h"
#include "resourceinfo/parser/context/AttachedTables.h"
#include "resourceinfo/parser/context/FlexibleHeaders.h"
#include "resourceinfo/parser/context/LearnQuantas.h"
#include "resourceinfo/parser/context/MatchTables.h"
#include "resourceinfo/parser/context/Phv.h"
#include "resourceinfo/parser/context/Preprocess.h"
#include "resourceinfo/parser/context/Resources.h"
#include "resourceinfo/parser/context/Tables.h"

#include <algorithm>

namespace Context {

namespace {

thread_local SurveySink* currentSink = nullptr;

/// The types of tables that the passes tell apart, and those that they have no step for.
constexpr std::string_view tableTypes[] = { "match",      "condition", "action_data", "selection",
                                            "statistics", "meter",     "stateful" };

bool isAttached( SurveyedTable const& table ) {
    return table.type == "statistics" || table.type == "meter" || table.type == "stateful";
}

void readTable( LooseJson value, BfResourceParserContext const& context, SurveyedTable& table ) {
    table.type = value[ "table_type" ].text();
    table.direction = value[ "direction" ].text();
    table.howReferenced = value[ "how_referenced" ].text();
    table.statisticsType = value[ "statistics_type" ].text();
    table.isWred = value[ "meter_type" ].text() == "red";
    table.size = value[ "size" ].unsignedNumber();
    table.stageTables = surveyStageTables( value );
    table.references = surveyReferences( value, context );
    table.actions = surveyActions( value, context );
    surveyBfTable( value, table );
}

void addNotes( SurveyedTable const& table, FileSurvey& file ) {
    if( std::find( std::begin( tableTypes ), std::end( tableTypes ), table.type ) == std::end( tableTypes ) )
        file.unknownWords.push_back( { table.index, "table_type", table.type } );
    if( table.type != "condition" )
        surveyResource( table, file );
    if( isAttached( table ) )
        surveyAttachedTable( table, file );
}

/// Goes through a top-level list: fills in what all elements have, and hands each to `read`.
template<class Element, class Read>
void readList( LooseJson list, SurveyNotes::Elements const& notes, std::vector<ElementDigests> digests,
               BfResourceParserContext const& context, std::vector<Element>& elements, Read read ) {
    U32 index = 0;
    for( JsonValue const& value : list.elements() ) {
        LooseJson const json( value );
        Element& element = elements.emplace_back();
        element.index = index;
        element.place = notes.at( index ).place;
        element.name = json[ "name" ].text();
        element.handle = surveyHandle( json, context );
        if( !digests.empty() ) {
            element.digest = digests.at( index ).digest;
            element.digests = std::move( digests[ index ].parts );
        }
        ++index;
        read( json, element );
    }
}

} // namespace

SurveySink* surveySinkIs( SurveySink* sink ) { return std::exchange( currentSink, sink ); }

SurveySink* surveySink() { return currentSink; }

FileSurveyor::Counts::Counts( BfResourceInfo::BfResourceParser const& parser )
    : resources( static_cast<U32>( parser.bfResources().size() ) ),
      tables( static_cast<U32>( parser.bfTables().size() ) ),
      counters( static_cast<U32>( parser.bfCounters().size() ) ),
      meters( static_cast<U32>( parser.bfMeters().size() ) ),
      wreds( static_cast<U32>( parser.bfWreds().size() ) ),
      registers( static_cast<U32>( parser.bfRegisterInfos().size() ) ),
      actions( static_cast<U32>( parser.bfActions().size() ) ),
      learnQuantas( static_cast<U32>( parser.bfLearnQuantaInfos().size() ) ) {}

FileSurveyor::FileSurveyor( BfResourceInfo::BfResourceParser const& parser, String const& path,
                            BfResourceParserContext const& context )
    : sink_( surveySink() ), context_( context ), before_( parser ) {
    survey_.path = path;
    survey_.pipeMask = context.pipeMask.value();
    survey_.handlePipeBits = context.handlePipeBits;
    if( sink_ && sink_->wantsDigests() )
        notes_.digests.emplace();
}

FileSurveyor::~FileSurveyor() {
    if( sink_ )
        sink_->take( std::move( survey_ ) );
}

void FileSurveyor::read( ContextDocument const& document ) {
    if( !sink_ || !document.isRead() )
        return;
    LooseJson const d( document.value() );
    auto const eachOf = [ & ]( Json::Member list, auto& elements, auto const& read ) {
        readList( d[ list ], notes_.places.elementsOf( list.name ),
                  notes_.digests ? notes_.digests->takeElements( list.name ) : std::vector<ElementDigests>(),
                  context_, elements, read );
    };
    eachOf( "tables", survey_.tables, [ & ]( LooseJson value, SurveyedTable& table ) {
        table.staticEntries = notes_.places.elementsOf( "tables" )[ table.index ].staticEntries;
        readTable( value, context_, table );
        addNotes( table, survey_ );
    } );
    eachOf( "learn_quanta", survey_.learnQuantas, surveyLearnQuanta );
    surveyPhv( d[ "phv_allocation" ], survey_ );
    eachOf( "flexible_headers", survey_.headers,
            [ & ]( LooseJson value, SurveyedHeader& header ) { surveyHeader( value, header, survey_ ); } );
    eachOf( "dynamic_hash_calculations", survey_.hashes, []( LooseJson, SurveyedElement& ) {} );
    survey_.duplicates = notes_.places.takeDuplicates();
    if( notes_.digests ) {
        survey_.digest = notes_.digests->file();
        survey_.digests = notes_.digests->takeMembers();
    }
}

/// The passes store the records of a file in the order of its elements.
void FileSurveyor::loaded() {
    Counts next = before_;
    for( SurveyedTable& table : survey_.tables )
        addRecords( table, next );
    for( SurveyedLearnQuanta& quanta : survey_.learnQuantas ) {
        if( !quanta.isOmitted )
            quanta.record = next.learnQuantas++;
    }
    survey_.isLoaded = true;
}

void FileSurveyor::addRecords( SurveyedTable& table, Counts& next ) {
    if( table.type != "condition" && !table.stageTables.empty() )
        table.resource = next.resources++;
    if( table.type == "match" && !table.isOmitted ) {
        table.record = next.tables++;
        table.firstAction = next.actions;
        next.actions += static_cast<U32>( table.actions.size() );
    } else if( table.type == "statistics" )
        table.record = next.counters++;
    else if( table.type == "meter" )
        table.record = table.isWred ? next.wreds++ : next.meters++;
    else if( table.type == "stateful" )
        table.record = next.registers++;
}

} // namespace Context
