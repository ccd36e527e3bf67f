#include "inspect/report/FloorPlan.h"
#include "report/Parts.h"

namespace Bfri {

namespace {

constexpr std::size_t narrowFrom = 15; ///< stages

// Bars: entries by stage, stacked by kind.

void writeBar( Html& html, Direction const& plan, std::size_t column, double scale ) {
    StageGrid const& grid = plan.grid();
    std::uint64_t const now = grid.all.cells[ column ].entries;
    std::uint64_t const was = grid.all.was.empty() ? now : grid.all.was[ column ].entries;
    double const height = scale * static_cast<double>( now ), former = scale * static_cast<double>( was );
    html.add( R"(<div class=sk title="stage {}, {}: {}"><u{}>{}{}</u>)", plan.data.chip.stages[ column ],
              directionWord( plan.ingress ), countedEntries( now ),
              was == now ? OwnText()
                         : own( " style=margin-bottom:{:.0f}px", std::max( 0.0, former - height ) + 3 ),
              now ? entriesText( now ) : "", delta( now, was, roundedFine ) );
    if( was != now )
        html.add( R"(<em style=bottom:{:.1f}px title="was {}"></em>)", former, grouped( was ) );
    for( auto row = grid.rows.rbegin(); row != grid.rows.rend(); ++row ) {
        double const part = scale * static_cast<double>( row->cells[ column ].entries );
        if( part >= 0.3 )
            html.add( "<i class={} style=height:{:.1f}px></i>", styleOf( row->type ).css, part );
    }
    html.add( "</div>" );
}

// Blocks.

/// The parts of a name that lines may be broken between: after each underscore.
std::vector<std::string_view> partsOf( std::string_view name ) {
    std::vector<std::string_view> parts;
    while( !name.empty() ) {
        parts.push_back( name.substr( 0, std::min( name.find( '_' ), name.size() - 1 ) + 1 ) );
        name.remove_prefix( parts.back().size() );
    }
    return parts;
}

/// How many lines of so many letters the parts of a name take.
std::size_t linesOf( std::vector<std::string_view> const& parts, std::size_t letters ) {
    std::size_t lines = 1, left = letters;
    for( std::string_view const part : parts ) {
        if( part.size() > left && left < letters ) {
            ++lines;
            left = letters;
        }
        left -= std::min( left, part.size() ); // what is longer than a line ends in an ellipsis
    }
    return lines;
}

/// A name as it fits into a block of a height, as wide as columns are on a page of 1,440 pixels.
struct FittedName {
    FittedName( Direction const& plan, PlanBlock const& block ) {
        std::size_t const columns = plan.data.chip.stages.size();
        double const width =
            ( 1150.0 - 168 ) / static_cast<double>( columns ) - ( columns < narrowFrom ? 20 : 10 ) - 13;
        auto const letters = static_cast<std::size_t>( std::max( 3.0, width / 6 ) );
        std::string_view const name = SplitName( block.resource->name() ).last;
        auto const parts = partsOf( name );
        bool const isWrapped = block.height >= 46 && linesOf( parts, letters ) + 1 <=
                                                         static_cast<std::size_t>( block.height - 5 ) / 13;
        css = isWrapped ? Literal( " l2 l3" ) : when( block.height >= 31, " l2" );
        if( !isWrapped )
            text.add( "{}", name );
        for( std::size_t i = 0; isWrapped && i < parts.size(); ++i )
            text.add( "{}{}", when( i > 0, "<wbr>" ), parts[ i ] );
    }

    Literal css = "";
    Html text;
};

String blockTitle( Direction const& plan, PlanBlock const& block, std::size_t column ) {
    ChipResource const& resource = *block.resource;
    return fmt::format( "{} · {} · {} of {} entries in stage {}", resource.name(),
                        styleOf( resource.type ).word, grouped( block.entries ), grouped( resource.size ),
                        plan.data.chip.stages[ column ] );
}

void writeSeveral( Html& html, Direction const& plan, PlanBlock const& block, std::size_t column,
                   std::uint64_t total ) {
    html.add( R"(<a class="b more {}{}" style=height:{}px href={} data-q="{}" )"
              R"(title="{} more in stage {}{}{}: {}, {} of the stage">{}</a>)",
              block.type ? styleOf( *block.type ).css : Literal( "ot" ), when( block.height >= 31, " l2" ),
              block.height, block.type ? listLink( *block.type ) : Literal( "#attached" ),
              plan.question( column, block.type ), grouped( block.several ), plan.data.chip.stages[ column ],
              when( block.type.has_value(), ", " ), block.type ? styleOf( *block.type ).word : Literal( "" ),
              countedEntries( block.entries ), percent( block.entries, total ),
              block.height < 12
                  ? Html()
                  : markup( "+{} <u>{}</u>", grouped( block.several ), rounded( block.entries ) ) );
}

void writeGhost( Html& html, Direction const& plan, PlanBlock const& block, std::size_t column ) {
    ChipResource const* const now = block.ghost->now;
    String const fate = now ? "now " + stagesText( now->stages ) : "removed";
    FittedName const name( plan, block );
    html.add( R"(<a class="b gho{}{}" style=height:{}px href={} title="{} of the old configuration · {}"{}>)"
              R"({}{}<u>{}</u></a>)",
              name.css, when( !now, " removed" ), block.height,
              now ? hrefOf( now->link() ) : OwnText( "#changes" ), blockTitle( plan, block, column ), fate,
              now ? tableMark( *now ) : OwnText(), markOf( now ? Mark::moved : Mark::removed ), name.text,
              fate );
}

void writeResource( Html& html, Direction const& plan, PlanBlock const& block, std::size_t column,
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
    OwnText marks;
    for( Mark const mark : marksIn( resource.marks ) )
        marks += own( " d-{}", wordOf( mark ) );
    FittedName const name( plan, block );
    html.add( R"(<a class="b {}{}{}{}" style=height:{}px href={} title="{}"{}>{}{}{}</a>)",
              styleOf( resource.type ).css, name.css, when( !resource.isStated, " ev" ), marks, block.height,
              hrefOf( resource.link() ), title, tableMark( resource ),
              resource.marks.any() ? markOf( marksIn( resource.marks ).front() ) : Html(), name.text,
              name.css == "" ? Html() : markup( "<u>{}</u>", entriesText( block.entries ) ) );
}

// Bands.

void writeBand( Html& html, PlanBand const& band ) {
    std::size_t const from = band.from * 100, to = band.to * 100;
    double const left = band.left->top + band.left->height / 2.0,
                 right = band.right->top + band.right->height / 2.0;
    if( band.isMove )
        html.add( R"(<path class=gh d="M{} {}H{}C{} {} {} {} {} {}H{}" />)", from + 50, left, from + 90,
                  from + 104, left, static_cast<long>( to ) - 4, right, to + 10, right, to + 50 );
    else if( band.to > band.from + 1 )
        html.add( R"(<path class=far d="M{} {}C{} {} {} {} {} {}" />)", from + 90, left, from + 130, left,
                  to - 30, right, to + 10, right );
    else {
        int const y0 = band.left->top, y1 = band.right->top;
        int const end0 = y0 + band.left->height, end1 = y1 + band.right->height;
        html.add( R"(<path class={} d="M{} {}C{} {} {} {} {} {}V{}C{} {} {} {} {} {}Z" />)",
                  styleOf( band.left->resource->type ).css, from + 90, y0, to, y0, to, y1, to + 10, y1, end1,
                  to, end1, to, end0, from + 90, end0 );
    }
}

} // namespace

void writeFloorPlan( Html& html, Direction const& direction ) {
    ReportData const& data = direction.data;
    FloorPlan const plan = floorPlanOf( data.chip, direction.program(), direction.ingress );
    if( plan.height == 0 )
        return;
    std::size_t const columns = plan.columns.size();
    double const scale =
        40 / static_cast<double>( std::max<std::uint64_t>( 1, data.mostEntriesOf( direction.number ) ) );
    html.add( R"(<div class="fp{}" style=--n:{} role=group aria-label="{}: floor plan">)"
              R"(<div class=fl>entries<small>one scale for all stages</small></div>)",
              when( columns >= narrowFrom, " nar" ), columns, direction.name() );
    for( std::size_t i = 0; i < columns; ++i )
        writeBar( html, direction, i, scale );
    html.add(
        "<div class=fl>tables<small>height: share of the entries in the stage, at least {} px</small></div>"
        "<div class=cs style=height:{}px>",
        leastBlock, plan.height );
    if( !plan.bands.empty() ) {
        html.add( R"(<svg class=rib viewBox="0 0 {} {}" preserveAspectRatio=none aria-hidden=true>)",
                  columns * 100, plan.height );
        for( PlanBand const& band : plan.bands )
            writeBand( html, band );
        html.add( "</svg>" );
    }
    for( std::size_t i = 0; i < columns; ++i ) {
        html.add( "<div class=co>" );
        for( PlanBlock const& block : plan.columns[ i ].blocks ) {
            if( block.several )
                writeSeveral( html, direction, block, i, plan.columns[ i ].entries );
            else if( block.ghost )
                writeGhost( html, direction, block, i );
            else
                writeResource( html, direction, block, i, plan.columns[ i ].entries );
        }
        html.add( "</div>" );
    }
    html.add( "</div></div>" );
}

} // namespace Bfri
