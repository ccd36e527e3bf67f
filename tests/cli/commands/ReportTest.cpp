#include "report/Parts.h"
#include "tests/cli/Inputs.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <regex>
#include <set>
#include <sstream>

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

String textOf( String const& path ) {
    std::ifstream const file( path, std::ios::binary );
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

class ReportCommand : public InFolder {
  protected:
    ReportCommand() {
        writeFile( "context.json", completeContext().text() );
        writeSwitchConf( "context.json" );
    }
    static String page() { return bfri( { "report", "switch.conf", "-o", "-" } ).out; }
};

TEST_F( ReportCommand, WritesTheFileThatItSays ) {
    auto const outcome = bfri( { "report", "switch.conf" } );
    EXPECT_EQ( outcome.status, 0 );
    EXPECT_EQ( outcome.out, "wrote report.html\n" );
    EXPECT_EQ( textOf( "report.html" ), page() );
    EXPECT_EQ( bfri( { "report", "switch.conf", "--output", "a.html" } ).out, "wrote a.html\n" );
    EXPECT_EQ( textOf( "a.html" ), page() );
}

TEST_F( ReportCommand, SaysWhatItCannotWriteOrRead ) {
    auto const outcome = bfri( { "report", "switch.conf", "-o", "missing/a.html" } );
    EXPECT_EQ( outcome.status, 4 );
    EXPECT_THAT( outcome.err, HasSubstr( "can't write missing/a.html: No such file or directory" ) );
    EXPECT_EQ( bfri( { "report", "missing.conf" } ).status, 3 );
    EXPECT_EQ( bfri( { "report", "switch.conf", "missing.conf" } ).status, 3 );
    EXPECT_EQ( bfri( { "report", "switch.conf", "--budget", "missing.toml" } ).status, 3 );
    EXPECT_EQ( bfri( { "report", "switch.conf", "switch.conf", "--svg" } ).status, 2 );
    EXPECT_FALSE( std::filesystem::exists( "report.html" ) );
}

TEST_F( ReportCommand, LetsNothingInOrOut ) {
    auto const hashText = Bfri::scriptHashInBase64();
    std::string_view const hash = hashText;
    String const policy = "default-src 'none'; style-src 'unsafe-inline'; script-src 'sha256-" +
                          String( hash ) + "'; base-uri 'none'; form-action 'none'";
    EXPECT_THAT( page(), HasSubstr( policy ) );
    EXPECT_EQ( hash.size(), 44U );
    EXPECT_THAT( page(), Not( HasSubstr( "http:" ) ) );
    EXPECT_THAT( page(), Not( HasSubstr( "https:" ) ) );
}

TEST_F( ReportCommand, TellsADifferenceWithStatus0 ) {
    writeFile( "other.json", referringContext().text() );
    auto const outcome = bfri( { "report", "switch.conf", "other.json", "-o", "-" } );
    EXPECT_EQ( outcome.status, 0 );
    EXPECT_THAT( outcome.out, HasSubstr( "verdict" ) );
    EXPECT_THAT( bfri( { "report", "switch.conf", "switch.conf", "-o", "-" } ).out,
                 HasSubstr( "<h2>No difference</h2>" ) );
}

TEST_F( ReportCommand, SaysOfHandlesWhatIsSoWhenATableShrinks ) {
    writeFile( "context.json",
               Support::ContextBuilder().table( Support::matchTable( "t" ).size( 9 ) ).text() );
    writeFile( "less.json", Support::ContextBuilder().table( Support::matchTable( "t" ).size( 8 ) ).text() );
    String const shrunk = bfri( { "report", "context.json", "less.json", "-o", "-" } ).out;
    EXPECT_THAT( shrunk,
                 HasSubstr( "By name: breaking. By handle: every handle still means the same record." ) );
    EXPECT_THAT( shrunk, Not( HasSubstr( "By handle: safe" ) ) );
    String const grown = bfri( { "report", "less.json", "context.json", "-o", "-" } ).out;
    EXPECT_THAT( grown, HasSubstr( "<h2>Agent-safe</h2>" ) );
    EXPECT_THAT( grown, HasSubstr( "notices nothing, and every handle still means the same record" ) );
}

TEST_F( ReportCommand, TellsProgramsThatExchangePipesAsTheirPipes ) {
    auto const program = []( char const* name ) {
        return Support::ContextBuilder()
            .table( Support::matchTable( name ).with( "/match_attributes/key_fields", "[1]" ) )
            .text();
    };
    writeSwitch( "old", { program( "acl" ), program( "nat" ) } );
    writeSwitch( "new", { program( "nat" ), program( "acl" ) } );
    String const page = bfri( { "report", "old", "new", "-o", "-" } ).out;
    EXPECT_THAT( page, HasSubstr( "would notice: 2 pipes with another program.</p>" ) );
    EXPECT_THAT( page, Not( HasSubstr( "Not read by the library, but different" ) ) );
}

TEST_F( ReportCommand, DrawsAPictureAlone ) {
    EXPECT_EQ( bfri( { "report", "switch.conf", "--svg" } ).out, "wrote report.svg\n" );
    EXPECT_THAT( textOf( "report.svg" ), StartsWith( "<svg xmlns=\"http://www.w3.org/2000/svg\"" ) );
    EXPECT_THAT( textOf( "report.svg" ), HasSubstr( ">acl<" ) );
}

/// A placed table of each type, and the type that its name says.
Support::ContextBuilder allKinds() {
    using namespace Support;
    ContextBuilder context;
    for( char const* const type : { "ternary_match", "algorithmic_tcam_match", "hash_match", "hash_action",
                                    "phase_0_match", "match_with_no_key" } )
        context.table( matchTable( type ).stages( { StageTable( type ).number( 1 ).size( 9 ) } ) );
    return context.table( actionDataTable( "action data" ) )
        .table( selectionTable( "selection" ) )
        .table( statisticsTable( "statistics" ) )
        .table( meterTable( "meter" ) )
        .table( wredTable( "WRED" ) )
        .table( statefulTable( "stateful" ) );
}

TEST_F( ReportCommand, APictureHasALegendInsideInTheColoursOfThePage ) {
    writeFile( "context.json", allKinds().text() );
    bfri( { "report", "switch.conf", "--svg" } );
    String const svg = textOf( "report.svg" );
    std::regex const entry(
        "<rect x=\"[0-9.]+\" y=\"[0-9.]+\" width=\"12\" height=\"12\" fill=\"([^\"]+)\" class=\"block\"/>"
        "<text x=\"([0-9.]+)\" y=\"[0-9.]+\" class=\"name\">([^<]+)" );
    std::size_t count = 0;
    for( std::sregex_iterator i( svg.begin(), svg.end(), entry ), end; i != end; ++i, ++count ) {
        String const word = ( *i )[ 3 ];
        EXPECT_LT( std::stod( ( *i )[ 2 ] ) + 6 * static_cast<double>( word.size() ), 1140 ) << word;
        U32 type = 0;
        while( type < 99 && std::string_view( Bfri::styleOf( type ).word ) != word )
            ++type;
        String const colour = fmt::format( "--{}:{}", Bfri::styleOf( type ).css, String( ( *i )[ 1 ] ) );
        EXPECT_NE( std::string_view( Bfri::styleSheet ).find( colour ), std::string_view::npos )
            << word << ' ' << colour;
    }
    EXPECT_EQ( count, Bfri::typeCount - 1 );
}

/// The text of the first end tag that does not end the element opened last, or the elements left open; empty
/// where all is well. Elements that HTML ends by itself do not count.
String unbalanced( String page ) {
    for( char const* const tag : { "style>", "script>" } ) {
        auto const start = page.find( String( "<" ) + tag ), end = page.find( String( "</" ) + tag );
        if( end != String::npos )
            page.erase( start, end - start + 2 + std::strlen( tag ) );
    }
    static std::set<String> const others{ "!DOCTYPE", "meta", "input", "col", "wbr",   "li",    "td",
                                          "th",       "tr",   "dt",    "dd",  "tbody", "thead", "tfoot" };
    std::vector<String> open;
    for( auto at = page.find( '<' ); at != String::npos; at = page.find( '<', at + 1 ) ) {
        String const tag = page.substr( at + 1, page.find( '>', at ) - at - 1 );
        String const name = tag.substr( 0, tag.find_first_of( " \n" ) );
        if( tag.back() == '/' || others.count( name ) > 0 )
            continue;
        if( tag.front() != '/' )
            open.push_back( name );
        else if( open.empty() || '/' + open.back() != name )
            return name + " after " + page.substr( at < 200 ? 0 : at - 200, 200 );
        else
            open.pop_back();
    }
    return open.empty() ? "" : open.back() + " is left open";
}

TEST_F( ReportCommand, EndsAllElementsThatItStarts ) {
    writeFile( "other.json", referringContext().text() );
    writeFile( "budget.toml", "[[capacity]]\ntype = '*'\nentries = 1\nlevel = 'warn'\nreason = 'x'\n" );
    EXPECT_EQ( unbalanced( page() ), "" );
    EXPECT_EQ( unbalanced( bfri( { "report", "switch.conf", "--budget", "budget.toml", "-o", "-" } ).out ),
               "" );
    EXPECT_EQ( unbalanced( bfri( { "report", "switch.conf", "other.json", "-o", "-" } ).out ), "" );
    EXPECT_EQ( unbalanced( bfri( { "report", "switch.conf", "--svg", "-o", "-" } ).out ), "" );
}

TEST_F( ReportCommand, OfNothingIsAPage ) {
    writeFile( "empty.conf", "{ \"devices\": [] }" );
    auto const outcome = bfri( { "report", "empty.conf", "-o", "-" } );
    EXPECT_EQ( outcome.status, 0 );
    EXPECT_THAT( outcome.out, HasSubstr( "No programs on 0 pipes" ) );
    EXPECT_EQ( bfri( { "report", "empty.conf", "--svg", "-o", "-" } ).status, 0 );
}

} // namespace
