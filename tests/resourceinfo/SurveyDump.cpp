// survey_dump CONF...: loads switch configurations with a survey, and prints for each a line of JSON: what
// was surveyed, with digests, and the names in the model's sequences of records; or the condition that ended
// the load.

#include "resourceinfo/BfResourceInfoIntf.h"
#include "resourceinfo/parser/context/Survey.h"
#include "zel/Assert.h"
#include "zel/Trace.h"

#include <cstdio>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace {

using namespace Context;
using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

class Dump {
  public:
    explicit Dump( Writer& writer ) : out_( writer ) {}

    template<class... Members>
    void object( Members... members ) {
        out_.StartObject();
        ( members(), ... );
        out_.EndObject();
    }
    template<class T>
    auto member( char const* name, T const& value ) {
        return [ this, name, &value ] {
            out_.Key( name );
            write( value );
        };
    }

    void write( String const& text ) {
        out_.String( text.data(), static_cast<rapidjson::SizeType>( text.size() ) );
    }
    void write( char const* text ) { out_.String( text ); }
    void write( bool value ) { out_.Bool( value ); }
    void write( U32 value ) { out_.Uint( value ); }
    void write( std::uint64_t value ) { out_.Uint64( value ); }
    void write( std::int64_t value ) { out_.Int64( value ); }
    void write( TruncatedSize::Kind kind ) { out_.Int( static_cast<int>( kind ) ); }
    template<class T>
    void write( std::optional<T> const& value ) {
        if( value )
            write( *value );
        else
            out_.Null();
    }
    template<class T>
    void write( std::vector<T> const& values ) {
        out_.StartArray();
        for( T const& value : values )
            write( value );
        out_.EndArray();
    }
    void write( Place const& p ) {
        object( member( "offset", p.offset ), member( "line", p.line ), member( "column", p.column ) );
    }
    void write( Digest const& digest ) {
        char text[ 33 ];
        std::snprintf( text, sizeof text, "%016llx%016llx", static_cast<unsigned long long>( digest.high ),
                       static_cast<unsigned long long>( digest.low ) );
        out_.String( text );
    }
    void write( PartDigest const& part ) {
        object( member( "path", part.path ), member( "digest", part.digest ) );
    }
    void write( SurveyedStageTable const& t ) {
        object( member( "path", t.path ), member( "stage", t.stage ), member( "stageText", t.stageText ),
                member( "type", t.type ), member( "size", t.size ) );
    }
    void write( SurveyedReference const& r ) {
        object( member( "list", r.list ), member( "handle", r.handle ) );
    }
    void write( SurveyedAction const& a ) {
        object( member( "name", a.name ), member( "handle", a.handle ) );
    }
    void write( SurveyedElement const& e ) {
        object( [ & ] { element( e ); } );
    }
    void write( SurveyedTable const& t ) {
        object( [ & ] { element( t ); }, member( "type", t.type ), member( "direction", t.direction ),
                member( "howReferenced", t.howReferenced ), member( "statisticsType", t.statisticsType ),
                member( "isWred", t.isWred ), member( "size", t.size ),
                member( "isControllable", t.isControllable ), member( "staticEntries", t.staticEntries ),
                member( "isOmitted", t.isOmitted ), member( "stageTables", t.stageTables ),
                member( "references", t.references ), member( "actions", t.actions ),
                member( "resource", t.resource ), member( "record", t.record ),
                member( "firstAction", t.firstAction ) );
    }
    void write( SurveyedLearnQuanta const& q ) {
        object( [ & ] { element( q ); }, member( "isOmitted", q.isOmitted ), member( "record", q.record ) );
    }
    void write( SurveyedHeader const& h ) {
        object( [ & ] { element( h ); }, member( "bits", h.bits ) );
    }
    void write( SurveyedPhvField const& f ) {
        object( member( "element", f.element ), member( "ingress", f.ingress ), member( "name", f.name ),
                member( "bytes", f.bytes ) );
    }
    void write( UnknownWord const& w ) {
        object( member( "table", w.table ), member( "member", w.member ), member( "word", w.word ) );
    }
    void write( DuplicateMember const& d ) {
        object( member( "pointer", d.pointer ), member( "place", d.place ) );
    }
    void write( TruncatedSize const& s ) {
        object( member( "kind", s.kind ), member( "index", s.index ), member( "name", s.name ),
                member( "size", s.size ), member( "kept", s.kept ) );
    }
    void write( FileSurvey const& f ) {
        object( member( "path", f.path ), member( "pipeMask", f.pipeMask ),
                member( "handlePipeBits", f.handlePipeBits ), member( "isLoaded", f.isLoaded ),
                member( "tables", f.tables ), member( "learnQuantas", f.learnQuantas ),
                member( "headers", f.headers ), member( "hashes", f.hashes ),
                member( "phvFields", f.phvFields ), member( "unknownWords", f.unknownWords ),
                member( "duplicates", f.duplicates ), member( "truncatedSizes", f.truncatedSizes ),
                member( "digest", f.digest ), member( "digests", f.digests ) );
    }

  private:
    void element( SurveyedElement const& e ) {
        member( "index", e.index )();
        member( "place", e.place )();
        member( "name", e.name )();
        member( "handle", e.handle )();
        member( "digest", e.digest )();
        member( "digests", e.digests )();
    }

    Writer& out_;
};

class Sink final : public SurveySink {
  public:
    void take( FileSurvey survey ) noexcept override { files.push_back( std::move( survey ) ); }
    bool wantsDigests() const override { return true; }

    std::vector<FileSurvey> files;
};

template<class Records>
std::vector<String> namesOf( Records const& records ) {
    std::vector<String> names;
    for( auto const& record : records )
        names.push_back( record.name );
    return names;
}

/// The names in each sequence that a survey refers to.
struct Model {
    explicit Model( BfResourceInfo::BfResourceParser const& parser )
        : resources( namesOf( parser.bfResources() ) ),
          tables( namesOf( parser.bfTables() ) ),
          counters( namesOf( parser.bfCounters() ) ),
          meters( namesOf( parser.bfMeters() ) ),
          wreds( namesOf( parser.bfWreds() ) ),
          registers( namesOf( parser.bfRegisterInfos() ) ),
          actions( namesOf( parser.bfActions() ) ),
          learnQuantas( namesOf( parser.bfLearnQuantaInfos() ) ) {}

    std::vector<String> resources, tables, counters, meters, wreds, registers, actions, learnQuantas;
};

void dump( char const* conf ) {
    Sink sink;
    surveySinkIs( &sink );
    std::optional<Model> model;
    String condition;
    try {
        model.emplace( *BfResourceInfo::bfResourceInfoIntfFactory( conf )->parser() );
    } catch( Zel::AssertionError const& error ) {
        condition = error.failure().condition;
    }
    surveySinkIs( nullptr );
    rapidjson::StringBuffer text;
    Writer writer( text );
    Dump out( writer );
    out.object( out.member( "condition", condition ), out.member( "files", sink.files ), [ & ] {
        if( !model )
            return;
        writer.Key( "model" );
        out.object( out.member( "resources", model->resources ), out.member( "tables", model->tables ),
                    out.member( "counters", model->counters ), out.member( "meters", model->meters ),
                    out.member( "wreds", model->wreds ), out.member( "registers", model->registers ),
                    out.member( "actions", model->actions ),
                    out.member( "learnQuantas", model->learnQuantas ) );
    } );
    std::puts( text.GetString() );
}

} // namespace

int main( int argc, char** argv ) {
    Zel::assertionHandlerIs( Zel::throwAssertionError );
    Zel::traceSinkIs( []( Zel::TraceLine const& ) {} );
    for( int i = 1; i < argc; ++i )
        dump( argv[ i ] );
}
