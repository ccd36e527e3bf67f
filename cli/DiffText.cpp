#include "cli/DiffText.h"

#include "cli/Join.h"
#include "cli/Paint.h"
#include "cli/TextFormat.h"
#include "cli/Utf8.h"
#include "cli/Verdict.h"

#include <cstdio>
#include <unordered_set>

namespace Bfri {

namespace {

/// Lists in brackets, references by the name of what they stand for.
String inLine( Value const& value ) {
    if( List const* const list = std::get_if<List>( &value.is ) ) {
        String text;
        for( Value const& element : *list )
            text += ( text.empty() ? "" : " " ) + inLine( element );
        return '[' + text + ']';
    }
    if( Row const* const referent = std::get_if<Row>( &value.is ) ) {
        Value const& name = valueOf( *referent, "name" );
        return inLine( name.is.index() == 0 ? valueOf( *referent, "handle" ) : name );
    }
    return textOf( value );
}

String labelOf( Row const& row ) {
    Identity const identity( row );
    return shown( identity.name ) + ( identity.table ? " of " + shown( *identity.table ) : "" );
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

String fromTo( Change const& change ) { return ' ' + inLine( change.from ) + " -> " + inLine( change.to ); }

/// Fields that change alike stand together: "size, totalEntries 512 -> 1024".
String textOf( std::vector<Change> const& changes ) {
    std::vector<std::pair<String, String>> groups; // fields and their change
    for( Change const& change : changes ) {
        String const values = fromTo( change );
        auto const alike = std::find_if( groups.begin(), groups.end(),
                                         [ & ]( auto const& group ) { return group.second == values; } );
        if( alike == groups.end() )
            groups.emplace_back( change.field, values );
        else
            alike->first.append( ", " ).append( change.field );
    }
    String text;
    for( auto const& [ fields, values ] : groups )
        text.append( text.empty() ? "" : "; " ).append( fields ).append( values );
    return text;
}

String textOf( ChangedRecord const& record ) {
    String text = textOf( record.fields );
    auto const add = [ & ]( String const& more ) { text += ( text.empty() ? "" : "; " ) + more; };
    if( record.move )
        add( "stage" + fromTo( *record.move ) );
    if( record.displaced )
        add( "queries by name answer for another one now" );
    return text;
}

class Section {
  public:
    Section( std::ostream& out, Look const& look, String const& title ) : out_( out ), look_( look ) {
        out_ << title << '\n';
    }
    ~Section() { out_ << '\n'; }
    Section( Section const& ) = delete;
    Section& operator=( Section const& ) = delete;

    void line( char mark, bool noticed, String const& text ) {
        Paint const paint = mark == '-' ? Paint::red : mark == '+' ? Paint::green : Paint::yellow;
        out_ << painted( look_, paint, String( "  " ) + mark + ( noticed ? '!' : ' ' ) + ' ' + text ) << '\n';
    }

  private:
    std::ostream& out_;
    Look const& look_;
};

void printKind( std::ostream& out, Look const& look, KindComparison const& comparison ) {
    if( !comparison.differs() )
        return;
    Listing const& kind = *comparison.kind;
    Section section( out, look, kind.word );
    for( Row const& row : comparison.removed )
        section.line( '-', effectOfRemoval( kind ) != Effect::none, labelOf( row ) + briefOf( row ) );
    for( Row const& row : comparison.added )
        section.line( '+', false, labelOf( row ) + briefOf( row ) );
    for( ChangedRecord const& record : comparison.changed )
        section.line( '~', effectOf( kind, record ) != Effect::none,
                      labelOf( record.row ) + "  " + textOf( record ) );
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
        if( kind.kind->word != std::string_view( "resources" ) )
            continue;
        leaveOut( handles.removed, kind.removed );
        leaveOut( handles.added, kind.added );
    }
    return handles;
}

void printFolded( std::ostream& out, Comparison const& comparison ) {
    auto const line = [ & ]( Tally const& tally, char const* what, char const* rest ) {
        if( tally.differing > 0 )
            out << what << tally.differing << " of " << tally.all << rest << '\n';
    };
    line( comparison.renumbered, "handles: ", " renumbered, and each still stands for the same" );
    line( comparison.shifted, "hit-bit ranges: ", " shifted, and each is as long as before" );
    if( comparison.renumbered.differing > 0 || comparison.shifted.differing > 0 )
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
    Row const blank = comparison.kind->blank();
    bool const movable = valueOf( blank, "stageStart" ).is.index() != 0;
    return { { "KIND", comparison.kind->word },
             { "ADDED", number( comparison.added.size() ) },
             { "REMOVED", number( comparison.removed.size() ) },
             { "CHANGED", U32( changed ) },
             { "MOVED", movable ? Value( U32( moved ) ) : Value() },
             { "SAME", number( comparison.same ) } };
}

void printTotals( std::ostream& out, Look const& look, Comparison const& comparison ) {
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
        text += ( text.empty() ? "" : ", " ) + std::to_string( count ) + ' ' +
                ( count == 1 ? notice.kind->one : notice.kind->word ) + ' ' + textOf( notice.effect );
    return text;
}

void printVerdict( std::ostream& out, Look const& look, Comparison const& comparison ) {
    auto const notices = noticesOf( comparison );
    out << ( notices.empty()
                 ? painted( look, Paint::green, "names and sizes are compatible" )
                 : painted( look, Paint::red,
                            "an agent that programs by name would notice (!): " + countsOf( notices ) ) )
        << '\n';
}

} // namespace

void printDiff( std::ostream& out, Look const& look, Comparison const& comparison ) {
    if( !comparison.configuration.empty() ) {
        Section section( out, look, "configuration" );
        for( Change const& change : comparison.configuration )
            section.line( '~', false, textOf( std::vector<Change>{ change } ) );
    }
    for( KindComparison const& kind : comparison.kinds ) {
        if( kind.kind->word == std::string_view( "handles" ) )
            printKind( out, look, restOf( kind, comparison.kinds ) );
        else
            printKind( out, look, kind );
    }
    printFolded( out, comparison );
    printTotals( out, look, comparison );
    printVerdict( out, look, comparison );
}

} // namespace Bfri
