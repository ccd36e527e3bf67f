#pragma once

// What several sections of the report share: its data, numbers and names as it shows them, pieces of markup.

#include "inspect/report/StageGrid.h"
#include "report/Html.h"

#include <array>

namespace Bfri {

struct Comparison;

/// The data of all sections.
struct ReportData {
    Chip const& chip;
    Comparison const* comparison = nullptr;           ///< null without an older configuration
    std::vector<std::array<StageGrid, 2>> grids = {}; ///< of each program: ingress, egress
    std::vector<std::vector<Use>> uses = {};          ///< of capacities, by program; empty without a budget

    bool isDiff() const { return comparison != nullptr; }
    bool hasBudget() const { return !uses.empty(); }
    GridCell totalOf( std::size_t program, std::size_t column ) const; ///< of both directions
    std::uint64_t entriesOf( std::size_t program ) const;
    std::uint64_t mostEntriesOf( std::size_t program ) const; ///< of one direction in a stage
};

/// One direction of a program.
struct Direction {
    ReportData const& data;
    std::size_t number; ///< of the program
    bool ingress;

    ChipProgram const& program() const { return data.chip.programs[ number ]; }
    StageGrid const& grid() const { return data.grids[ number ][ !ingress ]; }
    String name() const; ///< "pipe_a, ingress"
    /// The search in a list that finds what a picture adds up.
    OwnText question( std::size_t column, std::optional<U32> type ) const;
};

String grouped( std::uint64_t number );                    ///< "12,345"
String rounded( std::uint64_t number );                    ///< "9,999", "12k", "1.2M"
String roundedFine( std::uint64_t number );                ///< "999", "1.5k", "12.3k", "123k"
String entriesText( std::uint64_t number );                ///< "9,999", "12.3k"
String percent( std::uint64_t part, std::uint64_t whole ); ///< "26 %", "< 0.1 %"
/// "1 stage", "2 stages".
String counted( std::uint64_t number, std::string_view one, std::string_view many = {} );
String countedEntries( std::uint64_t number ); ///< "1 entry"

/// "3–5, 9".
String stagesText( std::vector<StageEntries> const& stages );
/// "stage 3", "stages 3–5, 9", "not placed".
String placeText( ChipResource const& resource );

/// A name in two parts: the path, with its last dot, and the rest.
struct SplitName {
    explicit SplitName( std::string_view name );
    std::string_view path, last;
};

/// How a type of resource looks and reads.
struct TypeStyle {
    Literal css;
    Literal word;
    Literal slug; ///< the word in a list's search
};
TypeStyle const& styleOf( U32 type );
Literal wordOf( Mark mark );
std::vector<Mark> marksIn( Marks marks ); ///< gravest first

/// The types of some resources, each once, in the order of pictures.
template<class Is>
std::vector<U32> typesOf( Chip const& chip, Is is ) {
    std::array<std::optional<U32>, typeCount> types;
    for( ChipResource const& resource : chip.resources ) {
        if( is( resource ) )
            types[ placeOfType( resource.type ) ] = resource.type;
    }
    std::vector<U32> all;
    for( auto const& type : types ) {
        if( type )
            all.push_back( *type );
    }
    return all;
}

constexpr Literal directionWord( bool ingress ) {
    return ingress ? Literal( "ingress" ) : Literal( "egress" );
}

/// The list that has resources of a type.
inline Literal listLink( U32 type ) {
    return isMatchType( type ) ? Literal( "#tables" ) : Literal( "#attached" );
}

/// A resource in a few words: what a counter counts, why a match table has no record.
String factsText( Chip const& chip, ChipResource const& resource );

/// "#t7".
OwnText hrefOf( ChipLink link );
/// The attribute by which parts light up together: the table of a resource, or the only table that it is
/// attached to.
OwnText tableMark( ChipResource const& resource );
Html swatchOf( U32 type );
Html typeWord( U32 type ); ///< with its swatch
/// The path of a name in grey, its last part in black.
Html nameParts( std::string_view name );
/// The same as a link to what has the name, if the report has that.
Html linkedName( std::optional<ChipLink> const& link, std::string_view name );
Html codeOf( U32 handle );
Html markOf( Mark mark );
Html marksOf( Marks marks );
Html severityMark( Severity severity );
/// "+12" or "−12" if the numbers differ, else nothing.
Html delta( std::uint64_t now, std::uint64_t was, String ( *text )( std::uint64_t ) = grouped );

enum class Soundness { good, warning, bad };
Literal cssOf( Soundness verdict );
Html iconOf( Soundness verdict );

/// The pipes of a program in small boxes.
Html pipeBoxes( ChipProgram const& program, bool withWord = false );

/// A switch between two or three pictures: radio buttons that the style sheet reads.
struct Choice {
    Literal id;
    Literal label;
};
Html switchOf( Literal name, Literal label, std::span<Choice const> choices );

struct ListColumn {
    Literal title;
    U32 width = 0;    ///< in pixels; 0: the remaining width
    Literal css = ""; ///< " class=n"
};
/// A list up to its first row. It ends with "</table></div>".
void openTable( Html& html, std::span<ListColumn const> columns, Literal headClass = "" );

/// Writes the first ones; the others are folded, under how many they are.
template<class Element, class Write>
void writeFolded( Html& html, std::span<Element> all, std::size_t most, Write write,
                  std::string_view noun = {} ) {
    std::size_t const shown = std::min( most, all.size() ), rest = all.size() - shown;
    write( all.first( shown ) );
    if( rest == 0 )
        return;
    html.add( "<details><summary>{}</summary>",
              noun.empty() ? grouped( rest ) + " more" : counted( rest, noun ) );
    write( all.subspan( shown ) );
    html.add( "</details>" );
}

// The sections, in their order on the page.

void writeOverview( Html& html, ReportData const& data ); ///< what can be said in short
void writeChanges( Html& html, ReportData const& data );  ///< of a difference
std::size_t countChanges( Chip const& chip );             ///< the rows of their lists
void writeStages( Html& html, ReportData const& data );   ///< maps and floor plans
void writeFloorPlan( Html& html, Direction const& direction );
void writeRoom( Html& html, ReportData const& data ); ///< the treemap
void writeFindings( Html& html, ReportData const& data );
void writeTables( Html& html, ReportData const& data );   ///< the list of match tables
void writeAttached( Html& html, ReportData const& data ); ///< the list of all other resources and records
void writeFields( Html& html, ReportData const& data );   ///< PHV bytes
void writeHitBits( Html& html, ReportData const& data );
void writeOthers( Html& html, ReportData const& data );     ///< hashes, headers, learn quantas
void writeTablePages( Html& html, ReportData const& data ); ///< a page for each match table

} // namespace Bfri
