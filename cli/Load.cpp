#include "cli/Load.h"

#include "cli/Expectations.h"
#include "cli/Failure.h"
#include "cli/Utf8.h"
#include "ostler/Ostler.h"
#include "zel/Log.h"
#include "zel/Trace.h"

#include <algorithm>

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

/// While it lives, trace lines go to a stream, except that the explanations of a failure (level 0) wait: they
/// often say what the failure's message says better.
class HeldExplanations {
  public:
    explicit HeldExplanations( std::ostream& err )
        : err_( err ),
          former_( Zel::traceSinkIs( [ this ]( Zel::TraceLine const& line ) { take( line ); } ) ) {}
    ~HeldExplanations() { Zel::traceSinkIs( former_ ); }
    HeldExplanations( HeldExplanations const& ) = delete;
    HeldExplanations& operator=( HeldExplanations const& ) = delete;

    std::vector<Zel::TraceLine> const& lines() const { return held_; }
    /// Nothing failed, so they are lines like others.
    void release() {
        for( Zel::TraceLine const& line : held_ )
            print( line );
        held_.clear();
    }

  private:
    void take( Zel::TraceLine const& line ) {
        if( line.level == 0 )
            held_.push_back( line );
        else
            print( line );
    }
    void print( Zel::TraceLine const& line ) {
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

[[noreturn]] void configurationFailed( String const& conf, Ostler::Status const& status ) {
    String text = status.text();
    if( text.ends_with( '.' ) ) // the format brings its own
        text.pop_back();
    Zel::LogHandle const* const message = Zel::logHandle( "BFN_SWITCH_CONF_ERROR" );
    if( !message )
        throw Failure( ExitStatus::notLoadable, shown( text ) );
    throw Failure( ExitStatus::notLoadable, filledIn( message->format, { shown( conf ), shown( text ) } ) +
                                                "\n" + message->recommendedAction );
}

/// What a failure's position speaks of, a context file as a rule, and what it says of it:
/// " at /tables/3, table 3", ", member "x"", or ": REASON" for a file that cannot be read.
struct Place {
    String what;
    String where;

    bool readable() const { return !where.starts_with( ": " ); }
};

Place placeOf( String const& position, String const& conf ) {
    String best;
    for( Ostler::Device const& device : Ostler::sdkContext()->profile.devices ) {
        for( Ostler::Pipeline const& pipeline : device.pipelines ) {
            String const start = "context file " + pipeline.contextFile;
            if( position.starts_with( start ) && start.size() > best.size() )
                best = start;
        }
    }
    return best.empty() ? Place{ conf, position } : Place{ best, position.substr( best.size() ) };
}

/// The lines of a message: what cannot be used, then what is known about it.
class Explanation {
  public:
    explicit Explanation( String const& what ) : text_( "can't use " + shown( what ) ) {}

    void add( String const& label, String const& text ) {
        if( !text.empty() )
            text_ += "\n  " + label + String( 11 - label.size(), ' ' ) + shown( text );
    }
    String const& text() const { return text_; }

  private:
    String text_;
};

String explanation( String const& conf, Zel::AssertionFailure const& failure,
                    std::vector<Zel::TraceLine> const& traced ) {
    Place const place = placeOf( failure.position, conf );
    Expectation const expected = place.readable()
                                     ? expectationOf( failure )
                                     : Expectation{ "a file, plain or gzip, that holds JSON", false };
    Explanation result( place.what );
    result.add(
        place.readable() ? "where:" : "problem:",
        place.where.substr( std::min( place.where.find_first_not_of( ":, " ), place.where.size() ) ) );
    result.add( "expected:", expected.text );
    result.add( "reported:", failure.message );
    for( Zel::TraceLine const& line : traced )
        result.add( "reported:", expected.traceAddsToIt ? line.text : "" );
    result.add( "condition:", failure.condition + ", in " + failure.function );
    return result.text();
}

Zel::Ptr<Model> loadWithExplanation( String const& conf, std::ostream& err ) {
    ThrowingAssertions const throwing;
    HeldExplanations explanations( err );
    try {
        auto model = BfResourceInfo::bfResourceInfoIntfFactory( conf );
        explanations.release();
        return model;
    } catch( Zel::AssertionError const& error ) {
        throw Failure( ExitStatus::notLoadable, explanation( conf, error.failure(), explanations.lines() ) );
    }
}

/// Of several pipelines with the same pipes only the last is read; whoever wrote them should hear of it.
void warnOfUnreadPipelines( Model const& model, std::ostream& err ) {
    std::vector<String> read;
    for( auto const& entry : model.parser()->contextFile() )
        read.push_back( entry.value() );
    for( Ostler::Device const& device : Ostler::sdkContext()->profile.devices ) {
        for( Ostler::Pipeline const& pipeline : device.pipelines ) {
            if( std::find( read.begin(), read.end(), pipeline.contextFile ) == read.end() )
                err << "bfri: " << shown( pipeline.contextFile )
                    << " is not read: a later pipeline has the same pipes\n";
        }
    }
}

} // namespace

Zel::Ptr<Model> load( String const& conf, OnBadData onBadData, std::ostream& err ) {
    auto model = onBadData == OnBadData::explain ? loadWithExplanation( conf, err )
                                                 : BfResourceInfo::bfResourceInfoIntfFactory( conf );
    Ostler::Status const& status = Ostler::sdkContext()->status;
    if( !status.ok() )
        configurationFailed( conf, status );
    warnOfUnreadPipelines( *model, err );
    return model;
}

} // namespace Bfri
