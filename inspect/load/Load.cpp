#include "inspect/load/Load.h"

#include "inspect/load/ConfPath.h"
#include "ostler/Ostler.h"
#include "zel/Log.h"
#include "zel/Trace.h"

#include <set>

namespace Bfri {

namespace {

/// Sets something; at its end, what was before.
template<auto set, class Value>
class Set {
  public:
    explicit Set( Value value ) : former_( set( std::move( value ) ) ) {}
    ~Set() { set( std::move( former_ ) ); }
    Set( Set const& ) = delete;
    Set& operator=( Set const& ) = delete;

  private:
    Value former_;
};

/// The message that the library has registered for a configuration that cannot be read.
String registeredText( String const& conf, Ostler::Status const& status ) {
    String text = status.text();
    if( text.ends_with( '.' ) ) // the format brings its own
        text.pop_back();
    if( text.starts_with( conf + ": " ) ) // and the path
        text.erase( 0, conf.size() + 2 );
    Zel::LogHandle const* const message = Zel::logHandle( "BFN_SWITCH_CONF_ERROR" );
    if( !message )
        return text;
    String filled = message->format;
    std::size_t from = 0;
    for( String const& part : { conf, text } ) {
        from = filled.find( "%s", from );
        if( from == String::npos )
            break;
        filled.replace( from, 2, part );
        from += part.size();
    }
    return filled + ' ' + message->recommendedAction;
}

/// Takes the surveys of the files that are loaded.
struct Surveyor final : Context::SurveySink {
    explicit Surveyor( bool digests ) : digests_( digests ) {}
    void take( Context::FileSurvey survey ) noexcept override { files.push_back( std::move( survey ) ); }
    bool wantsDigests() const override { return digests_; }

    std::vector<Context::FileSurvey> files = {};

  private:
    bool const digests_;
};

/// What was loaded last.
std::variant<Configuration, Fault> loaded( String const& path, ConfPath const& conf, Zel::Ptr<Model> model,
                                           std::vector<Context::FileSurvey> files ) {
    OstlerContext const& context = *Ostler::sdkContext();
    if( context.status.ok() )
        return Configuration{ conf.isContextFile() ? path : conf.switchConf(), conf.isContextFile(),
                              std::move( model ), context.profile, std::move( files ) };
    Fault fault = faultOf( context.status );
    addHint( fault );
    fault.reported.push_back( registeredText( conf.switchConf(), context.status ) );
    return fault;
}

} // namespace

std::variant<Configuration, Fault> loadConfiguration( String const& path, Survey survey,
                                                      std::ostream& trace ) {
    Set<Zel::assertionHandlerIs, Zel::AssertionHandler> const throwing( Zel::throwAssertionError );
    std::vector<Zel::TraceLine> explanations; // of level 0, which the library has for a failure alone
    Set<Zel::traceSinkIs, Zel::TraceSink> const tracing( [ & ]( Zel::TraceLine const& line ) {
        if( line.level == 0 )
            explanations.push_back( line );
        else
            trace << line.source << '/' << line.level << ' ' << line.line << ' ' << line.function << ": "
                  << line.text << '\n';
    } );
    Surveyor surveyor( survey == Survey::digests );
    Set<Context::surveySinkIs, Context::SurveySink*> const surveying( survey == Survey::none ? nullptr
                                                                                             : &surveyor );
    ConfPath const conf( path );
    try {
        auto model = BfResourceInfo::bfResourceInfoIntfFactory( conf.switchConf() );
        return loaded( path, conf, std::move( model ), std::move( surveyor.files ) );
    } catch( Zel::AssertionError const& error ) {
        Fault fault = faultOf( error.failure(), explanations );
        fault.files = std::move( surveyor.files );
        return fault;
    }
}

std::variant<Configuration, Fault> loadOrAbort( String const& path ) {
    ConfPath const conf( path );
    return loaded( path, conf, BfResourceInfo::bfResourceInfoIntfFactory( conf.switchConf() ), {} );
}

std::vector<String> unreadContextFiles( Configuration const& configuration ) {
    std::set<String> read;
    for( auto const& entry : configuration.parser().contextFile() )
        read.insert( entry.value() );
    std::vector<String> unread;
    for( Ostler::Device const& device : configuration.profile.devices ) {
        for( Ostler::Pipeline const& pipeline : device.pipelines ) {
            if( read.count( pipeline.contextFile ) == 0 )
                unread.push_back( pipeline.contextFile );
        }
    }
    return unread;
}

} // namespace Bfri
