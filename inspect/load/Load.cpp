#include "inspect/load/Load.h"

#include "inspect/load/ConfPath.h"
#include "ostler/Ostler.h"
#include "zel/Log.h"
#include "zel/Trace.h"

#include <set>

namespace Bfri {

namespace {

/// While it lives, failing assertions throw.
class ThrowingAssertions {
  public:
    ThrowingAssertions() : former_( Zel::assertionHandlerIs( Zel::throwAssertionError ) ) {}
    ~ThrowingAssertions() { Zel::assertionHandlerIs( former_ ); }
    ThrowingAssertions( ThrowingAssertions const& ) = delete;
    ThrowingAssertions& operator=( ThrowingAssertions const& ) = delete;

  private:
    Zel::AssertionHandler former_;
};

/// While it lives, trace lines go to a stream, except for level 0, which the library has for the explanation
/// of a failure alone: that may go into the failure's message.
class HeldExplanations {
  public:
    explicit HeldExplanations( std::ostream& err )
        : err_( err ),
          former_( Zel::traceSinkIs( [ this ]( Zel::TraceLine const& line ) { take( line ); } ) ) {}
    ~HeldExplanations() { Zel::traceSinkIs( former_ ); }
    HeldExplanations( HeldExplanations const& ) = delete;
    HeldExplanations& operator=( HeldExplanations const& ) = delete;

    std::vector<Zel::TraceLine> const& lines() const { return held_; }

  private:
    void take( Zel::TraceLine const& line ) {
        if( line.level == 0 )
            held_.push_back( line );
        else
            err_ << line.source << '/' << line.level << ' ' << line.line << ' ' << line.function << ": "
                 << line.text << '\n';
    }

    std::ostream& err_;
    std::vector<Zel::TraceLine> held_;
    Zel::TraceSink former_;
};

/// Puts texts in the places of a registered format's "%s".
String filledIn( String format, std::initializer_list<String> texts ) {
    std::size_t from = 0;
    for( String const& text : texts ) {
        auto const place = format.find( "%s", from );
        if( place == String::npos )
            break;
        format.replace( place, 2, text );
        from = place + text.size();
    }
    return format;
}

/// The message that the library has registered for a configuration that cannot be read.
String registeredText( String const& conf, Ostler::Status const& status ) {
    String text = status.text();
    if( text.ends_with( '.' ) ) // the format brings its own
        text.pop_back();
    if( text.starts_with( conf + ": " ) ) // and the path
        text.erase( 0, conf.size() + 2 );
    Zel::LogHandle const* const message = Zel::logHandle( "BFN_SWITCH_CONF_ERROR" );
    return message ? filledIn( message->format, { conf, text } ) + ' ' + message->recommendedAction : text;
}

/// Takes the surveys of the files that are loaded.
class Surveyor final : public Context::SurveySink {
  public:
    explicit Surveyor( Survey survey )
        : survey_( survey ), former_( Context::surveySinkIs( survey == Survey::none ? nullptr : this ) ) {}
    ~Surveyor() override { Context::surveySinkIs( former_ ); }
    Surveyor( Surveyor const& ) = delete;
    Surveyor& operator=( Surveyor const& ) = delete;

    void take( Context::FileSurvey survey ) noexcept override { files_.push_back( std::move( survey ) ); }
    bool wantsDigests() const override { return survey_ == Survey::digests; }
    std::vector<Context::FileSurvey> files() { return std::move( files_ ); }

  private:
    Survey const survey_;
    Context::SurveySink* const former_;
    std::vector<Context::FileSurvey> files_;
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
    ThrowingAssertions const throwing;
    HeldExplanations const explanations( trace );
    Surveyor surveyor( survey );
    ConfPath const conf( path );
    try {
        auto model = BfResourceInfo::bfResourceInfoIntfFactory( conf.switchConf() );
        return loaded( path, conf, std::move( model ), surveyor.files() );
    } catch( Zel::AssertionError const& error ) {
        Fault fault = faultOf( error.failure(), explanations.lines() );
        fault.files = surveyor.files();
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
