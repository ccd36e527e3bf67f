#include "inspect/load/Load.h"

#include "inspect/load/ConfHint.h"
#include "inspect/rows/Utf8.h"
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

/// The lines of a message: what cannot be used, then what is known about it.
class Explanation {
  public:
    explicit Explanation( Fault const& fault )
        : text_( "can't use " + escapeForTerminal( subjectOf( fault ) ) ) {}

    void add( String const& label, String const& text ) {
        if( !text.empty() )
            text_ += "\n  " + label + String( 11 - label.size(), ' ' ) + escapeForTerminal( text );
    }
    String const& text() const { return text_; }

  private:
    String text_;
};

} // namespace

String placeText( Fault const& fault ) {
    String place = fault.pointer.value_or( "" ).empty() ? "" : "at " + *fault.pointer;
    if( fault.line && fault.problem.empty() )
        place = "line " + std::to_string( *fault.line ) + ", column " + std::to_string( *fault.column );
    auto const add = [ & ]( String const& part ) { place += ( place.empty() ? "" : ", " ) + part; };
    if( !fault.member.empty() )
        add( "member \"" + fault.member + '"' );
    if( fault.tableIndex )
        add( "table " + std::to_string( *fault.tableIndex ) +
             ( fault.table.empty() ? "" : " \"" + fault.table + '"' ) );
    return place;
}

namespace {

/// Whether `bfri check`, which reads the file again, has more to say of a fault.
bool hasMore( Fault const& fault ) { return fault.pointer || fault.line; }

[[noreturn]] void fail( String const& conf, Fault const& fault ) {
    Explanation result( fault );
    result.add( "where:", placeText( fault ) );
    result.add( "problem:", problemOf( fault ) );
    result.add( "expected:", fault.expected );
    result.add( "handle:", handleOf( fault ) );
    result.add( "found:", fault.found );
    result.add( "hint:", fault.hint );
    for( String const& text : fault.reported )
        result.add( "reported:", text );
    result.add( "condition:", conditionOf( fault ) );
    String const more = "\n'bfri check " + escapeForTerminal( conf ) + "' says more";
    throw LoadFailure( result.text() + ( hasMore( fault ) ? more : "" ), fault );
}

/// What the library has registered for a configuration that cannot be read.
String registeredText( String const& conf, Ostler::Status const& status ) {
    String text = status.text();
    if( text.ends_with( '.' ) ) // the format brings its own
        text.pop_back();
    if( text.starts_with( conf + ": " ) ) // and the path
        text.erase( 0, conf.size() + 2 );
    Zel::LogHandle const* const message = Zel::logHandle( "BFN_SWITCH_CONF_ERROR" );
    return message ? filledIn( message->format, { conf, text } ) + ' ' + message->recommendedAction : text;
}

[[noreturn]] void configurationFailed( String const& conf, Ostler::Status const& status ) {
    Fault fault = faultOf( status );
    addHint( fault );
    fault.reported.push_back( registeredText( conf, status ) );
    fail( conf, fault );
}

Zel::Ptr<Model> loadWithExplanation( String const& conf, std::ostream& err ) {
    ThrowingAssertions const throwing;
    HeldExplanations explanations( err );
    try {
        return BfResourceInfo::bfResourceInfoIntfFactory( conf );
    } catch( Zel::AssertionError const& error ) {
        fail( conf, faultOf( error.failure(), explanations.lines(), conf, Ostler::sdkContext()->profile ) );
    }
}

} // namespace

Zel::Ptr<Model> loadSilently( String const& conf, OnBadData onBadData, std::ostream& err ) {
    auto model = onBadData == OnBadData::explain ? loadWithExplanation( conf, err )
                                                 : BfResourceInfo::bfResourceInfoIntfFactory( conf );
    Ostler::Status const& status = Ostler::sdkContext()->status;
    if( !status.ok() )
        configurationFailed( conf, status );
    return model;
}

std::vector<String> unreadContextFiles( Model const& model ) {
    std::set<String> read;
    for( auto const& entry : model.parser()->contextFile() )
        read.insert( entry.value() );
    std::vector<String> unread;
    for( Ostler::Device const& device : Ostler::sdkContext()->profile.devices ) {
        for( Ostler::Pipeline const& pipeline : device.pipelines ) {
            if( read.count( pipeline.contextFile ) == 0 )
                unread.push_back( pipeline.contextFile );
        }
    }
    return unread;
}

Zel::Ptr<Model> load( String const& conf, OnBadData onBadData, std::ostream& err ) {
    auto model = loadSilently( conf, onBadData, err );
    for( String const& path : unreadContextFiles( *model ) )
        err << "bfri: " << escapeForTerminal( path ) << " is not read: a later pipeline has the same pipes\n";
    return model;
}

} // namespace Bfri
