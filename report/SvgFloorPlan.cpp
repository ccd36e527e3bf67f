// The floor plans as a picture of their own, for papers and wikis: what the page shows, in SVG alone.

#include "inspect/report/FloorPlan.h"
#include "report/Parts.h"
#include "report/Report.h"

#include <charconv>

namespace Bfri {

namespace {

constexpr double pictureWidth = 1140, margin = 16, headHeight = 58, planGap = 34, legendLine = 18;

constexpr U32 severalTypes = ~U32(); // no type's number: the colour of several

/// The light colour of a kind, which the style sheet has first: "--te:#fbd093".
OwnText fillOf( U32 type ) {
    constexpr std::size_t digits = 6;
    String const name = fmt::format( "--{}:#", styleOf( type ).css );
    std::string_view const sheet = styleSheet,
                           colour = sheet.substr( sheet.find( name ) + name.size(), digits );
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
    svg.add( R"(<text x="{:.1f}" y="{:.1f}" class="{}">{}</text>)", x, y, css, text );
}

void drawBlock( Drawing const& drawing, PlanBlock const& block, std::size_t column, Stage stage ) {
    Html& svg = drawing.svg;
    double const left = drawing.left( column ), top = drawing.top + block.top;
    String const several = grouped( block.several );
    bool const isEven = block.resource && !block.resource->isStated;
    svg.add(
        R"(<g><title>{}</title><rect x="{:.1f}" y="{:.1f}" width="{:.1f}" height="{}" fill="{}" class="{}"/>)",
        block.several ? several + " more"
                      : fmt::format( "{}, stage {}: {}", block.resource->name(), stage,
                                     countedEntries( block.entries ) ),
        left, top, drawing.width(), block.height - 1,
        fillOf( block.several ? block.type.value_or( severalTypes ) : block.resource->type ),
        isEven ? Literal( "even" ) : Literal( "block" ) );
    String const name = block.several ? "+" + several : String( SplitName( block.resource->name() ).last );
    if( block.height >= 11 )
        writeText( svg, left + 4, top + 11, "name", cut( name, drawing.width() - 6 ) );
    if( block.height >= 31 )
        writeText( svg, left + 4, top + 24, "size", entriesText( block.entries ) );
    svg.add( "</g>" );
}

void drawBand( Drawing const& drawing, PlanBand const& band ) {
    double const x0 = drawing.left( band.from ) + drawing.width(), x1 = drawing.left( band.to ),
                 middle = ( x0 + x1 ) / 2;
    double const y0 = drawing.top + band.left->top, y1 = drawing.top + band.right->top;
    double const end0 = y0 + band.left->height - 1, end1 = y1 + band.right->height - 1;
    if( band.to == band.from + 1 )
        drawing.svg.add(
            R"(<path class="band" fill="{7}" d="M{0:.1f} {3:.1f}C{1:.1f} {3:.1f} {1:.1f} {4:.1f} )"
            R"({2:.1f} {4:.1f}V{6:.1f}C{1:.1f} {6:.1f} {1:.1f} {5:.1f} {0:.1f} {5:.1f}Z"/>)",
            x0, middle, x1, y0, y1, end0, end1, fillOf( band.left->resource->type ) );
    else
        drawing.svg.add(
            R"(<path class="far" d="M{0:.1f} {3:.1f}C{1:.1f} {3:.1f} {1:.1f} {4:.1f} {2:.1f} {4:.1f}"/>)", x0,
            middle, x1, ( y0 + end0 ) / 2, ( y1 + end1 ) / 2 );
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

/// The kinds that are drawn, in lines as wide as the picture. Returns where the last line ends.
double drawLegend( Html& svg, Chip const& chip, double top ) {
    double x = margin, y = top - legendLine;
    for( U32 const type : typesOf( chip, []( auto const& resource ) { return !resource.stages.empty(); } ) ) {
        double const width =
            34 + 6.5 * static_cast<double>( std::string_view( styleOf( type ).word ).size() );
        if( y < top || x + width > pictureWidth - margin ) {
            x = margin;
            y += legendLine;
        }
        svg.add( R"(<rect x="{:.1f}" y="{:.1f}" width="12" height="12" fill="{}" class="block"/>)", x, y - 10,
                 fillOf( type ) );
        writeText( svg, x + 17, y, "name", styleOf( type ).word );
        x += width;
    }
    return y + legendLine;
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
    Html plans;
    double top = margin + headHeight;
    for( ChipProgram const& program : chip.programs ) {
        for( bool const ingress : { true, false } ) {
            FloorPlan const plan = floorPlanOf( chip, program, ingress );
            if( plan.height == 0 )
                continue;
            drawPlan( { plans, plan, top }, chip,
                      fmt::format( "{}, {}", program.name, directionWord( ingress ) ) );
            top += plan.height + planGap + headHeight;
        }
    }
    double const height = drawLegend( plans, chip, top - headHeight + 14 ) - 2;
    Html svg;
    svg.add( R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {0} {1}" width="{0}" height="{1}">)"
             R"(<title>Floor plan: tables by stage, each as high as its share of the entries</title>)"
             R"(<style>{2}</style><rect width="100%" height="100%" fill="#fcfcfa"/>{3}</svg>)",
             pictureWidth, height, style, plans );
    return std::move( svg ).take();
}

} // namespace Bfri
