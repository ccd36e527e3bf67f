// The floor plans as a picture of their own, for papers and wikis: what the page shows, in SVG alone.

#include "cli/report/Embedded.h"
#include "cli/report/Report.h"
#include "cli/report/Text.h"
#include "inspect/report/FloorPlan.h"

#include <charconv>
#include <map>

namespace Bfri {

namespace {

constexpr double pictureWidth = 1140, margin = 16, headHeight = 58, planGap = 34, legendLine = 18;

constexpr U32 severalTypes = ~U32(); // no type's number: the colour of several

/// The light colour of a kind, which the style sheet has first: "--te:#fbd093".
OwnText fillOf( U32 type ) {
    constexpr std::size_t digits = 6;
    String const name = "--" + String( styleOf( type ).css.view() ) + ":#";
    std::string_view const colour =
        embeddedStyleSheet.substr( embeddedStyleSheet.find( name ) + name.size(), digits );
    U32 number = 0;
    std::from_chars( colour.data(), colour.data() + colour.size(), number, 16 );
    return own( "#{:06x}", number );
}

struct Drawing {
    Html& svg;
    FloorPlan const& plan;
    double top;

    double columnWidth() const {
        return ( pictureWidth - 2 * margin ) / static_cast<double>( plan.columns.size() );
    }
    double inset() const { return plan.columns.size() < 15 ? 8 : 4; }
    double left( std::size_t column ) const {
        return margin + columnWidth() * static_cast<double>( column ) + inset();
    }
    double width() const { return columnWidth() - 2 * inset(); }
};

/// As many letters as there is room for, about 6.5 pixels each.
String cut( std::string_view text, double width ) {
    auto const letters = static_cast<std::size_t>( std::max( 1.0, width / 6.5 ) );
    std::size_t count = 0, end = 0;
    while( end < text.size() && count < letters ) {
        ++end;
        while( end < text.size() && ( static_cast<unsigned char>( text[ end ] ) & 0xC0U ) == 0x80 )
            ++end;
        ++count;
    }
    return end == text.size() ? String( text ) : String( text.substr( 0, end - 1 ) ) + "…";
}

void writeText( Html& svg, double x, double y, Literal css, std::string_view text ) {
    svg.leaf( "text", { { "x", own( "{:.1f}", x ) }, { "y", own( "{:.1f}", y ) }, { "class", css } }, text );
}

void drawBlock( Drawing const& drawing, PlanBlock const& block, std::size_t column, Stage stage ) {
    Html& svg = drawing.svg;
    double const left = drawing.left( column ), top = drawing.top + block.top;
    bool const isEven = block.resource && !block.resource->isStated;
    svg.open( "g" ).leaf( "title", block.several
                                       ? grouped( block.several ) + " more"
                                       : block.resource->name() + ", stage " + std::to_string( stage ) +
                                             ": " + counted( block.entries, "entry", "entries" ) );
    svg.empty( "rect", { { "x", own( "{:.1f}", left ) },
                         { "y", own( "{:.1f}", top ) },
                         { "width", own( "{:.1f}", drawing.width() ) },
                         { "height", own( "{}", block.height - 1 ) },
                         { "fill", fillOf( block.several ? block.type.value_or( severalTypes )
                                                         : block.resource->type ) },
                         { "class", isEven ? Literal( "even" ) : Literal( "block" ) } } );
    String const name =
        block.several ? "+" + grouped( block.several ) : String( SplitName( block.resource->name() ).last );
    if( block.height >= 11 )
        writeText( svg, left + 4, top + 11, "name", cut( name, drawing.width() - 6 ) );
    if( block.height >= 31 )
        writeText( svg, left + 4, top + 24, "size", entriesText( block.entries ) );
    svg.close();
}

void drawBand( Drawing const& drawing, PlanBand const& band ) {
    double const x0 = drawing.left( band.from ) + drawing.width(), x1 = drawing.left( band.to ),
                 middle = ( x0 + x1 ) / 2;
    auto const top = [ & ]( PlanBlock const& block ) { return drawing.top + block.top; };
    double const y0 = top( *band.left ), y1 = top( *band.right );
    double const end0 = y0 + band.left->height - 1, end1 = y1 + band.right->height - 1;
    if( band.to == band.from + 1 )
        drawing.svg.empty(
            "path",
            { { "class", "band" },
              { "fill", fillOf( band.left->resource->type ) },
              { "d", own( "M{0:.1f} {3:.1f}C{1:.1f} {3:.1f} {1:.1f} {4:.1f} {2:.1f} {4:.1f}V{6:.1f}C{1:.1f} "
                          "{6:.1f} {1:.1f} {5:.1f} {0:.1f} {5:.1f}Z",
                          x0, middle, x1, y0, y1, end0, end1 ) } } );
    else
        drawing.svg.empty( "path",
                           { { "class", "far" },
                             { "d", own( "M{0:.1f} {3:.1f}C{1:.1f} {3:.1f} {1:.1f} {4:.1f} {2:.1f} {4:.1f}",
                                         x0, middle, x1, ( y0 + end0 ) / 2, ( y1 + end1 ) / 2 ) } } );
}

void drawPlan( Drawing const& drawing, Chip const& chip, String const& title ) {
    writeText( drawing.svg, margin, drawing.top - 40, "title", title );
    for( PlanBand const& band : drawing.plan.bands )
        drawBand( drawing, band );
    for( std::size_t i = 0; i < drawing.plan.columns.size(); ++i ) {
        double const middle = drawing.left( i ) + drawing.width() / 2;
        PlanColumn const& column = drawing.plan.columns[ i ];
        writeText( drawing.svg, middle, drawing.top - 20, "stage", std::to_string( chip.stages[ i ] ) );
        writeText( drawing.svg, middle, drawing.top - 6, "sum",
                   column.blocks.empty() ? "–" : entriesText( column.entries ) );
        for( PlanBlock const& block : column.blocks )
            drawBlock( drawing, block, i, chip.stages[ i ] );
    }
}

struct LegendEntry {
    U32 type;
    double x;
    std::size_t line;
};

/// The kinds that are drawn, in lines as wide as the picture.
std::vector<LegendEntry> legendOf( Chip const& chip ) {
    std::map<std::size_t, U32> types;
    for( ChipResource const& resource : chip.resources ) {
        if( !resource.stages.empty() )
            types.emplace( placeOfType( resource.type ), resource.type );
    }
    std::vector<LegendEntry> entries;
    double x = margin;
    std::size_t line = 0;
    for( auto const& [ place, type ] : types ) {
        double const width = 34 + 6.5 * static_cast<double>( styleOf( type ).word.view().size() );
        if( x + width > pictureWidth - margin ) {
            x = margin;
            ++line;
        }
        entries.push_back( { type, x, line } );
        x += width;
    }
    return entries;
}

void drawLegend( Html& svg, std::vector<LegendEntry> const& entries, double top ) {
    for( LegendEntry const& entry : entries ) {
        double const y = top + legendLine * static_cast<double>( entry.line );
        svg.empty( "rect", { { "x", own( "{:.1f}", entry.x ) },
                             { "y", own( "{:.1f}", y - 10 ) },
                             { "width", "12" },
                             { "height", "12" },
                             { "fill", fillOf( entry.type ) },
                             { "class", "block" } } );
        writeText( svg, entry.x + 17, y, "name", styleOf( entry.type ).word.view() );
    }
}

struct NamedPlan {
    String title;
    FloorPlan plan;
};

std::vector<NamedPlan> plansOf( Chip const& chip ) {
    std::vector<NamedPlan> plans;
    for( ChipProgram const& program : chip.programs ) {
        for( bool const ingress : { true, false } ) {
            FloorPlan plan = floorPlanOf( chip, program, ingress );
            if( plan.height > 0 )
                plans.push_back(
                    { program.name + ", " + String( directionWord( ingress ).view() ), std::move( plan ) } );
        }
    }
    return plans;
}

constexpr char const* style = "text{font:11px -apple-system,BlinkMacSystemFont,'Segoe "
                              "UI',Roboto,Arial,'Liberation Sans',sans-serif;fill:#14181d}"
                              ".title{font-size:14px;font-weight:600}.stage,.sum{text-anchor:middle;fill:#"
                              "616a75}.stage{font-size:12px;fill:#14181d}"
                              ".size{font-size:10px}.block{stroke:#14181d;stroke-opacity:.36;stroke-width:.6}"
                              ".even{stroke:#434b55;stroke-dasharray:3 "
                              "2}.band{opacity:.5}.far{fill:none;stroke:#616a75;stroke-dasharray:3 3}";

} // namespace

String svgFloorPlans( Chip const& chip ) {
    auto const plans = plansOf( chip );
    auto const legend = legendOf( chip );
    double const legendHeight =
        legend.empty() ? 0 : legendLine * static_cast<double>( legend.back().line + 1 );
    double height = margin + 12 + legendHeight;
    for( NamedPlan const& one : plans )
        height += headHeight + one.plan.height + planGap;
    Html svg( Html::Syntax::xml );
    svg.open( "svg", { { "xmlns", "http://www.w3.org/2000/svg" },
                       { "viewBox", own( "0 0 {} {}", pictureWidth, height ) },
                       { "width", own( "{}", pictureWidth ) },
                       { "height", own( "{}", height ) } } );
    svg.leaf( "title", "Floor plan: tables by stage, each as high as its share of the entries" )
        .leaf( "style", style );
    svg.empty( "rect", { { "width", "100%" }, { "height", "100%" }, { "fill", "#fcfcfa" } } );
    double top = margin + headHeight;
    for( NamedPlan const& one : plans ) {
        drawPlan( { svg, one.plan, top }, chip, one.title );
        top += one.plan.height + planGap + headHeight;
    }
    drawLegend( svg, legend, height - legendHeight + 2 );
    return std::move( svg.close() ).take();
}

} // namespace Bfri
