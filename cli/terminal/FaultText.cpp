#include "cli/terminal/FaultText.h"
#include "cli/terminal/Characters.h"

namespace Bfri {

namespace {

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

String faultText( Fault const& fault ) {
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
    return result.text();
}

} // namespace Bfri
