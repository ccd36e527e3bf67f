#include "cli/terminal/DiffText.h"
#include "cli/terminal/Characters.h"

#include "cli/terminal/Paint.h"
#include "cli/terminal/RecordText.h"
#include "cli/terminal/TextFormat.h"
#include "inspect/diff/Join.h"
#include "inspect/diff/Verdict.h"

#include <cstdio>
#include <unordered_set>

namespace Bfri {

namespace {

/// Lists in brackets, handles with the name of what they stand for.
String inLine( Value const& value ) {
    if( List const* const list = std::get_if<List>( &value.is ) ) {
        String text;
        for( Value const& element : *list )
            text += ( text.empty() ? "" : " " ) + inLine( element );
        return '[' + text + ']';
    }
    if( Row const* const referent = std::get_if<Row>( &value.is ) ) {
        Value const& name = valueOf( *referent, "name" );
        String const handle = textOf( valueOf( *referent, "handle" ) );
        return name.is.index() == 0 ? handle : handle + " (" + textOf( name ) + ')';
    }
    return textOf( value );
}

String labelOf( Row const& row ) {
    Identity const identity( row );
    return escapeForTerminal( identity.name ) +
           ( identity.table ? " of " + escapeForTerminal( *identity.table ) : "" );
}

/// What tells most about a record that the other model does not have.
String briefOf( Row const& row ) {
    String text;
    for( auto const& [ field, title ] :
         { std::pair( "size", "size " ), std::pair( "stageStart", "stage " ) } ) {
        if( Value const& value = valueOf( row, field ); value.is.index() != 0 )
            text += ( text.empty() ? "  " : ", " ) + String( title ) + inLine( value );
    }
    return text;
}

/// A change in the words of the lists. Without the model behind them, those have no names for handles.
struct ShownChange {
    String field;
    String values;
};

String fromTo( Value const& from, Value const& to ) { return ' ' + inLine( from ) + " -> " + inLine( to ); }

bool hasNames( Value const& value ) {
    List const* const list = std::get_if<List>( &value.is );
    return std::holds_alternative<Row>( value.is ) || ( list && !list->empty() && hasNames( list->front() ) );
}

/// The rows are the records for people, in which a flag may be a word.
ShownChange shownChange( Change const& change, Row const& old, Row const& now ) {
    if( hasNames( change.from ) || hasNames( change.to ) )
        return { String( change.field ), fromTo( change.from, change.to ) };
    Value const& from = valueOf( old, change.field );
    bool const isDirection = change.field == "ingress" && std::holds_alternative<String>( from.is );
    return { isDirection ? "direction" : String( change.field ),
             fromTo( from, valueOf( now, change.field ) ) };
}

/// Fields that change alike stand together: "size, totalEntries 512 -> 1024".
String textOfChanges( std::vector<ShownChange> const& changes ) {
    std::vector<ShownChange> groups;
    for( ShownChange const& change : changes ) {
        auto const alike = std::find_if( groups.begin(), groups.end(), [ & ]( ShownChange const& group ) {
            return group.values == change.values;
        } );
        if( alike == groups.end() )
            groups.push_back( change );
        else
            alike->field.append( ", " ).append( change.field );
    }
    String text;
    for( auto const& [ fields, values ] : groups )
        text.append( text.empty() ? "" : "; " ).append( fields ).append( values );
    return text;
}

String textOfRecord( RecordKind const& kind, ChangedRecord const& record ) {
    Row const old = rowForPeople( kind.kind, record.row );
    Row const now = rowForPeople( kind.kind, record.now );
    std::vector<ShownChange> changes;
    for( Change const& change : record.fields ) {
        if( change.field != "typeName" ) // people see it as the type
            changes.push_back( shownChange( change, old, now ) );
    }
    String text = textOfChanges( changes );
    auto const add = [ & ]( String const& more ) { text += ( text.empty() ? "" : "; " ) + more; };
    if( record.move )
        add( "stage" + fromTo( record.move->from, record.move->to ) );
    if( record.displaced )
        add( "queries by name answer for another one now" );
    return text;
}

class DiffSection {
  public:
    DiffSection( std::ostream& out, TerminalStyle const& look, String const& title )
        : out_( out ), look_( look ) {
        out_ << title << '\n';
    }
    ~DiffSection() { out_ << '\n'; }
    DiffSection( DiffSection const& ) = delete;
    DiffSection& operator=( DiffSection const& ) = delete;

    void line( char mark, bool noticed, String const& text ) {
        Paint const paint = mark == '-' ? Paint::red : mark == '+' ? Paint::green : Paint::yellow;
        out_ << painted( look_, paint, String( "  " ) + mark + ( noticed ? '!' : ' ' ) + ' ' + text ) << '\n';
    }

  private:
    std::ostream& out_;
    TerminalStyle const& look_;
};

void printKind( std::ostream& out, TerminalStyle const& look, KindComparison const& comparison ) {
    if( !comparison.differs() )
        return;
    RecordKind const& kind = *comparison.kind;
    DiffSection section( out, look, kind.many );
    for( Row const& row : comparison.removed )
        section.line( '-', effectOfRemoval( kind ) != Effect::none, labelOf( row ) + briefOf( row ) );
    for( Row const& row : comparison.added )
        section.line( '+', false, labelOf( row ) + briefOf( row ) );
    for( ChangedRecord const& record : comparison.changed )
        section.line( '~', effectOf( kind, record ) != Effect::none,
                      labelOf( record.row ) + "  " + textOfRecord( kind, record ) );
}

std::string_view nameOf( Row const& row ) { return valueAs<String>( row, "name" ); }

/// Leaves out the rows whose names stand in other rows.
void leaveOut( std::vector<Row>& rows, std::vector<Row> const& others ) {
    std::unordered_set<std::string_view> names;
    for( Row const& row : others )
        names.insert( nameOf( row ) );
    std::erase_if( rows, [ & ]( Row const& row ) { return names.count( nameOf( row ) ) > 0; } );
}

/// The placed tables that the resources' section does not tell of.
KindComparison restOf( KindComparison handles, std::vector<KindComparison> const& kinds ) {
    for( KindComparison const& kind : kinds ) {
        if( kind.kind->kind != Kind::resources )
            continue;
        leaveOut( handles.removed, kind.removed );
        leaveOut( handles.added, kind.added );
    }
    return handles;
}

/// The front of a list of lines, and how many more there are.
template<class Elements, class ToText>
void printFew( std::ostream& out, Elements const& elements, ToText text ) {
    constexpr std::size_t most = 3;
    std::size_t count = 0;
    for( auto const& element : elements ) {
        if( count++ < most )
            out << "  " << text( element ) << '\n';
    }
    if( count > most )
        out << "  and " << count - most << " more; --json has all\n";
}

/// What is true of the new numbers, or of the old ones.
String claimOf( Handles const& handles ) {
    if( handles.reused > 0 )
        return "; " + std::to_string( handles.reused ) + " of the old numbers now " +
               ( handles.reused == 1 ? "stands" : "stand" ) + " for something else";
    return handles.keepMeanings ? ", and each new number stands for what the old one stood for" : "";
}

void printRenumbered( std::ostream& out, Handles const& handles ) {
    if( handles.tally.differing == 0 )
        return;
    out << "handles of records that both have: " << handles.tally.differing << " of " << handles.tally.all
        << " renumbered" << claimOf( handles ) << '\n';
    printFew( out, handles.renumbered, []( Renumbering const& one ) {
        String const label =
            escapeForTerminal( one.name ) + ( one.table ? " of " + escapeForTerminal( *one.table ) : "" );
        return kindOf( one.kind ).one + ( ' ' + label ) + fromTo( Hex( one.from ), Hex( one.to ) );
    } );
}

void printShared( std::ostream& out, TerminalStyle const& look, Handles const& handles ) {
    if( handles.shared.empty() )
        return;
    out << "handles that stand for several records now:\n";
    printFew( out, handles.shared, [ & ]( SharedHandle const& shared ) {
        String names;
        for( String const& name : shared.names )
            names += ( names.empty() ? "" : ", " ) + Bfri::escapeForTerminal( name );
        return painted( look, Paint::red, "! " + textOf( Hex( shared.handle ) ) + "  " + names );
    } );
}

void printFolded( std::ostream& out, TerminalStyle const& look, Comparison const& comparison ) {
    Tally const& shifted = comparison.shifted;
    printRenumbered( out, comparison.handles );
    printShared( out, look, comparison.handles );
    if( shifted.differing > 0 )
        out << "hit-bit ranges: " << shifted.differing << " of " << shifted.all
            << " shifted, and each is as long as before\n";
    if( comparison.handles.tally.differing + comparison.handles.shared.size() + shifted.differing > 0 )
        out << '\n';
}

U32 number( std::size_t count ) { return static_cast<U32>( count ); }

Row totalsOf( KindComparison const& comparison ) {
    auto const& records = comparison.changed;
    auto const moved =
        std::count_if( records.begin(), records.end(), []( auto const& record ) { return record.move; } );
    auto const changed = std::count_if( records.begin(), records.end(), []( auto const& record ) {
        return !record.fields.empty() || record.displaced;
    } );
    bool const movable = comparison.kind->kind == Kind::resources;
    return { { "KIND", comparison.kind->many },
             { "ADDED", number( comparison.added.size() ) },
             { "REMOVED", number( comparison.removed.size() ) },
             { "CHANGED", U32( changed ) },
             { "MOVED", movable ? Value( U32( moved ) ) : Value() },
             { "SAME", number( comparison.same ) } };
}

void printTotals( std::ostream& out, TerminalStyle const& look, Comparison const& comparison ) {
    U32 const aNumber = 0;
    RowList totals{ { { "KIND", {} },
                      { "ADDED", aNumber },
                      { "REMOVED", aNumber },
                      { "CHANGED", aNumber },
                      { "MOVED", aNumber },
                      { "SAME", aNumber } },
                    {} };
    for( KindComparison const& kind : comparison.kinds )
        totals.rows.push_back( totalsOf( kind ) );
    printColumns( out, totals, look );
    out << '\n';
}

/// "1 table", "2 PHV fields".
String counted( RecordKind const& kind, std::size_t count ) {
    bool const isPhv = kind.kind == Kind::phvFields; // its words in commands are no nouns
    char const* const one = isPhv ? kind.noun : kind.one;
    char const* const several = isPhv ? kind.nouns : kind.many;
    return std::to_string( count ) + ' ' + ( count == 1 ? one : several );
}

/// "2 tables removed, 1 action removed". The notices of a kind stand together.
String countsOf( std::vector<Notice> const& notices ) {
    std::vector<std::pair<Notice, std::size_t>> counts;
    for( Notice const& notice : notices ) {
        auto const alike = std::find_if( counts.begin(), counts.end(), [ & ]( auto const& count ) {
            return count.first.kind == notice.kind && count.first.effect == notice.effect;
        } );
        alike == counts.end() ? counts.emplace_back( notice, 1 ).second : ++alike->second;
    }
    String text;
    for( auto const& [ notice, count ] : counts )
        text += ( text.empty() ? "" : ", " ) + counted( *notice.kind, count ) + ' ' + textOf( notice.effect );
    return text;
}

void printVerdict( std::ostream& out, TerminalStyle const& look, Comparison const& comparison ) {
    String noticed = countsOf( noticesOf( comparison ) );
    if( std::size_t const shared = comparison.handles.shared.size(); shared > 0 )
        noticed += ( noticed.empty() ? "" : ", " ) + std::to_string( shared ) +
                   ( shared == 1 ? " handle" : " handles" ) + " of several records";
    out << ( noticed.empty() ? painted( look, Paint::green, "names and sizes are compatible" )
                             : painted( look, Paint::red,
                                        "an agent that programs by name would notice (!): " + noticed ) )
        << '\n';
}

} // namespace

void printDiff( std::ostream& out, TerminalStyle const& look, Comparison const& comparison ) {
    if( !comparison.configuration.empty() ) {
        DiffSection section( out, look, "configuration" );
        for( Change const& change : comparison.configuration )
            section.line( '~', false, String( change.field ) + fromTo( change.from, change.to ) );
    }
    for( KindComparison const& kind : comparison.kinds ) {
        if( kind.kind->kind == Kind::handles )
            printKind( out, look, restOf( kind, comparison.kinds ) );
        else
            printKind( out, look, kind );
    }
    printFolded( out, look, comparison );
    printTotals( out, look, comparison );
    printVerdict( out, look, comparison );
}

} // namespace Bfri
