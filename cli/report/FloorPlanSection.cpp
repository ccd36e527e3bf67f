#include "cli/report/Sections.h"
#include "inspect/report/FloorPlan.h"

namespace Bfri {

namespace {

constexpr std::size_t narrowFrom = 15; ///< stages

struct PlanContext {
    ReportData const& data;
    ChipProgram const& program;
    StageGrid const& grid;
    bool ingress;

    std::size_t columns() const { return data.chip.stages.size(); }
    String stageText( std::size_t column ) const {
        return "stage " + std::to_string( data.chip.stages[ column ] );
    }
};

// Bars: entries by stage, stacked by kind.

void writeBar( Html& html, PlanContext const& plan, std::size_t column, double scale ) {
    std::uint64_t const now = plan.grid.all.cells[ column ].entries;
    std::uint64_t const was = plan.grid.all.was.empty() ? now : plan.grid.all.was[ column ].entries;
    double const height = scale * static_cast<double>( now ),
                 formerHeight = scale * static_cast<double>( was );
    html.open( "div",
               { { "class", "sk" },
                 titled( plan.stageText( column ) + ", " + String( directionWord( plan.ingress ).view() ) +
                         ": " + counted( now, "entry", "entries" ) ) } );
    Attributes top;
    if( was != now )
        top.push_back(
            { "style", own( "margin-bottom:{:.0f}px", std::max( 0.0, formerHeight - height ) + 3 ) } );
    html.open( "u", top ).text( now ? entriesText( now ) : "" );
    writeDelta( html, now, was, roundedFine );
    html.close();
    if( was != now )
        html.leaf( "em",
                   { { "style", own( "bottom:{:.1f}px", formerHeight ) }, titled( "was " + grouped( was ) ) },
                   "" );
    for( auto row = plan.grid.rows.rbegin(); row != plan.grid.rows.rend(); ++row ) {
        double const part = scale * static_cast<double>( row->cells[ column ].entries );
        if( part >= 0.3 )
            html.leaf( "i",
                       { { "class", styleOf( row->type ).css }, { "style", own( "height:{:.1f}px", part ) } },
                       "" );
    }
    html.close();
}

// Blocks.

/// How many lines of so many letters a name takes, if it may be broken after an underscore alone.
std::size_t linesOf( std::string_view name, std::size_t letters ) {
    std::size_t lines = 1, left = letters;
    while( !name.empty() ) {
        std::size_t const part = std::min( name.find( '_' ), name.size() - 1 ) + 1;
        if( part > left && left < letters ) {
            ++lines;
            left = letters;
        }
        left -= std::min( left, part ); // what is longer than a line ends in an ellipsis
        name.remove_prefix( part );
    }
    return lines;
}

void writeBroken( Html& html, std::string_view name ) {
    while( !name.empty() ) {
        std::size_t const part = std::min( name.find( '_' ), name.size() - 1 ) + 1;
        html.text( name.substr( 0, part ) );
        name.remove_prefix( part );
        if( !name.empty() )
            html.mayBreak();
    }
}

enum class Size { small, twoLines, wrapped };
constexpr Literal sizeClasses[] = { "", " l2", " l2 l3" };

/// The text that fits into a block of a height, as wide as columns are on a page of 1,440 pixels.
Size sizeOf( PlanBlock const& block, std::string_view name, std::size_t columns ) {
    double const width =
        ( 1150.0 - 168 ) / static_cast<double>( columns ) - ( columns < narrowFrom ? 20 : 10 ) - 13;
    auto const letters = static_cast<std::size_t>( std::max( 3.0, width / 6 ) );
    if( block.height >= 46 &&
        linesOf( name, letters ) + 1 <= static_cast<std::size_t>( block.height - 5 ) / 13 )
        return Size::wrapped;
    return block.height >= 31 ? Size::twoLines : Size::small;
}

void writeBlockName( Html& html, std::string_view name, Size size ) {
    if( size == Size::wrapped )
        writeBroken( html, name );
    else
        html.text( name );
}

String blockTitle( PlanContext const& plan, PlanBlock const& block, std::size_t column ) {
    ChipResource const& resource = *block.resource;
    return resource.name() + " · " + String( styleOf( resource.type ).word.view() ) + " · " +
           grouped( block.entries ) + " of " + grouped( resource.size ) + " entries in " +
           plan.stageText( column );
}

void writeSeveral( Html& html, PlanContext const& plan, PlanBlock const& block, std::size_t column,
                   std::uint64_t total ) {
    Literal const css = block.type ? styleOf( *block.type ).css : Literal( "ot" );
    String const kind = block.type ? ", " + String( styleOf( *block.type ).word.view() ) : "";
    html.open( "a", { { "class", own( "b more {}{}", css, when( block.height >= 31, " l2" ) ) },
                      { "style", own( "height:{}px", block.height ) },
                      { "href", block.type ? listLink( *block.type ) : Literal( "#attached" ) },
                      { "data-q", questionOf( plan.data, plan.program, plan.data.chip.stages[ column ],
                                              plan.ingress, block.type ) },
                      titled( grouped( block.several ) + " more in " + plan.stageText( column ) + kind +
                              ": " + counted( block.entries, "entry", "entries" ) + ", " +
                              percent( block.entries, total ) + " of the stage" ) } );
    if( block.height >= 12 )
        html.text( "+" + grouped( block.several ) + " " ).leaf( "u", rounded( block.entries ) );
    html.close();
}

void writeGhost( Html& html, PlanContext const& plan, PlanBlock const& block, std::size_t column ) {
    ChipResource const* const now = block.ghost->now;
    String const fate = now ? "now " + stagesText( now->stages ) : "removed";
    std::string_view const name = SplitName( block.resource->name() ).last;
    Size const size = sizeOf( block, name, plan.columns() );
    Attributes attributes{
        { "class",
          own( "b gho{}{}", sizeClasses[ static_cast<std::size_t>( size ) ], when( !now, " removed" ) ) },
        { "style", own( "height:{}px", block.height ) },
        now ? linkTo( now->link() ) : Attribute( "href", "#changes" ),
        titled( blockTitle( plan, block, column ) + " of the old configuration · " + fate ) };
    if( now )
        addTableMark( attributes, *now );
    html.open( "a", attributes );
    writeMark( html, now ? Mark::moved : Mark::removed );
    writeBlockName( html, name, size );
    html.leaf( "u", fate ).close();
}

OwnText markClasses( Marks marks ) {
    OwnText classes( "" );
    for( std::size_t mark = 0; mark < markCount; ++mark ) {
        if( marks.test( mark ) )
            classes += own( " d-{}", styleOf( static_cast<Mark>( mark ) ).css );
    }
    return classes;
}

void writeResource( Html& html, PlanContext const& plan, PlanBlock const& block, std::size_t column,
                    std::uint64_t total ) {
    ChipResource const& resource = *block.resource;
    String title =
        blockTitle( plan, block, column ) + ", " + percent( block.entries, total ) + " of the stage";
    if( resource.stages.size() > 1 )
        title += " · stages " + stagesText( resource.stages );
    if( !resource.isStated )
        title += " · sizes not stated: spread evenly";
    if( resource.old && resource.old->size != resource.size )
        title += " · was " + grouped( resource.old->size );
    if( resource.old && has( resource.marks, Mark::moved ) )
        title += " · was in " + placeText( *resource.old );
    std::string_view const name = SplitName( resource.name() ).last;
    Size const size = sizeOf( block, name, plan.columns() );
    Attributes attributes{
        { "class",
          own( "b {}{}{}{}", styleOf( resource.type ).css, sizeClasses[ static_cast<std::size_t>( size ) ],
               when( !resource.isStated, " ev" ), markClasses( resource.marks ) ) },
        { "style", own( "height:{}px", block.height ) },
        linkTo( resource.link() ),
        titled( title ) };
    addTableMark( attributes, resource );
    html.open( "a", attributes );
    if( resource.marks.any() )
        writeMark( html, gravest( resource.marks ) );
    writeBlockName( html, name, size );
    if( size != Size::small )
        html.leaf( "u", entriesText( block.entries ) );
    html.close();
}

// Bands.

double middleOf( PlanBlock const& block ) { return block.top + block.height / 2.0; }

void writeBand( Html& html, PlanBand const& band ) {
    std::size_t const from = band.from * 100, to = band.to * 100;
    double const left = middleOf( *band.left ), right = middleOf( *band.right );
    if( band.isMove )
        html.shape( "path",
                    { { "class", "gh" },
                      { "d", own( "M{} {}H{}C{} {} {} {} {} {}H{}", from + 50, left, from + 90, from + 104,
                                  left, static_cast<long>( to ) - 4, right, to + 10, right, to + 50 ) } } );
    else if( band.to > band.from + 1 )
        html.shape( "path", { { "class", "far" },
                              { "d", own( "M{} {}C{} {} {} {} {} {}", from + 90, left, from + 130, left,
                                          to - 30, right, to + 10, right ) } } );
    else {
        int const y0 = band.left->top, y1 = band.right->top;
        int const end0 = y0 + band.left->height, end1 = y1 + band.right->height;
        html.shape( "path",
                    { { "class", styleOf( band.left->resource->type ).css },
                      { "d", own( "M{} {}C{} {} {} {} {} {}V{}C{} {} {} {} {} {}Z", from + 90, y0, to, y0, to,
                                  y1, to + 10, y1, end1, to, end1, to, end0, from + 90, end0 ) } } );
    }
}

void writeBands( Html& html, FloorPlan const& plan ) {
    if( plan.bands.empty() )
        return;
    html.open( "svg", { { "class", "rib" },
                        { "viewBox", own( "0 0 {} {}", plan.columns.size() * 100, plan.height ) },
                        { "preserveAspectRatio", "none" },
                        { "aria-hidden", "true" } } );
    for( PlanBand const& band : plan.bands )
        writeBand( html, band );
    html.close();
}

void writeCaption( Html& html, char const* what, String const& how ) {
    html.open( "div", { { "class", "fl" } } ).text( what ).leaf( "small", how ).close();
}

void writeColumn( Html& html, PlanContext const& context, PlanColumn const& column, std::size_t number ) {
    html.open( "div", { { "class", "co" } } );
    for( PlanBlock const& block : column.blocks ) {
        if( block.several )
            writeSeveral( html, context, block, number, column.entries );
        else if( block.ghost )
            writeGhost( html, context, block, number );
        else
            writeResource( html, context, block, number, column.entries );
    }
    html.close();
}

} // namespace

void writeFloorPlan( Html& html, ReportData const& data, ChipProgram const& program, bool ingress ) {
    FloorPlan const plan = floorPlanOf( data.chip, program, ingress );
    if( plan.height == 0 )
        return;
    auto const& grids = data.grids[ static_cast<std::size_t>( &program - data.chip.programs.data() ) ];
    std::uint64_t const most =
        std::max( { std::uint64_t( 1 ), grids[ 0 ].mostEntries(), grids[ 1 ].mostEntries() } );
    PlanContext const context{ data, program, grids[ !ingress ], ingress };
    html.open( "div", { { "class", own( "fp{}", when( context.columns() >= narrowFrom, " nar" ) ) },
                        { "style", own( "--n:{}", context.columns() ) },
                        { "role", "group" },
                        labelled( program.name + ", " + String( directionWord( ingress ).view() ) +
                                  ": floor plan" ) } );
    writeCaption( html, "entries", "one scale for all stages" );
    for( std::size_t i = 0; i < context.columns(); ++i )
        writeBar( html, context, i, 40 / static_cast<double>( most ) );
    writeCaption( html, "tables",
                  fmt::format( "height: share of the entries in the stage, at least {} px", leastBlock ) );
    html.open( "div", { { "class", "cs" }, { "style", own( "height:{}px", plan.height ) } } );
    writeBands( html, plan );
    for( std::size_t i = 0; i < context.columns(); ++i )
        writeColumn( html, context, plan.columns[ i ], i );
    html.close().close();
}

} // namespace Bfri
