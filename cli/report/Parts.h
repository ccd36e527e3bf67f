#pragma once

// Pieces of markup that several sections of the report share.

#include "cli/report/Text.h"
#include "inspect/report/CapacityGrid.h"

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
};

Attribute linkTo( ChipLink link );
/// The attribute by which parts light up together: the table of a resource, or the only table that it is
/// attached to.
void addTableMark( Attributes& attributes, ChipResource const& resource );

void writeSwatch( Html& html, U32 type );
/// The path of a name in grey, its last part in black.
void writeName( Html& html, std::string_view name );
void writeHandle( Html& html, U32 handle );
void writeStrong( Html& html, std::string_view text );

struct MarkStyle {
    Literal css;
    Literal glyph;
    Literal word;
};
MarkStyle const& styleOf( Mark mark );
void writeMark( Html& html, Mark mark );
void writeMarks( Html& html, Marks marks );
Mark gravest( Marks marks );

void writeSeverity( Html& html, Severity severity );

/// "+12" or "−12" if the numbers differ, else nothing.
void writeDelta( Html& html, std::uint64_t now, std::uint64_t was,
                 String ( *text )( std::uint64_t ) = grouped );

enum class Soundness { good, warning, bad };
Literal cssOf( Soundness verdict );
void writeIcon( Html& html, Soundness verdict );

/// The pipes of a program in small boxes.
void writePipes( Html& html, ChipProgram const& program, bool withWord = false );

/// A switch between two or three pictures: radio buttons that the style sheet reads.
struct Choice {
    Literal id;
    Literal label;
};
void writeSwitch( Html& html, Literal name, char const* label, std::span<Choice const> choices );

/// The search in a list that finds what a picture adds up.
OwnText questionOf( ReportData const& data, ChipProgram const& program, Stage stage, bool ingress,
                    std::optional<U32> type );

/// The id of the list that has resources of a type.
inline Literal listLink( U32 type ) {
    return isMatchType( type ) ? Literal( "#tables" ) : Literal( "#attached" );
}

} // namespace Bfri
