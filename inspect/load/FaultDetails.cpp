#include "inspect/load/Fault.h"
#include "inspect/load/FileText.h"
#include "inspect/rows/Row.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <utility>

#include <fmt/format.h>
#include <rapidjson/reader.h>

namespace Bfri {

namespace {

/// The steps of a JSON pointer, unescaped.
std::vector<String> stepsOf( std::string_view pointer ) {
    std::vector<String> steps;
    for( std::size_t i = 0; i < pointer.size(); ++i ) {
        if( pointer[ i ] == '/' )
            steps.emplace_back();
        else if( pointer[ i ] == '~' && i + 1 < pointer.size() )
            steps.back() += pointer[ ++i ] == '0' ? '~' : '/';
        else
            steps.back() += pointer[ i ];
    }
    return steps;
}

bool isUtf8Continuation( char c ) { return ( c & 0xC0 ) == 0x80; }

/// The front of a text, at most so many bytes, no character torn.
String cutTo( std::size_t most, String text ) {
    if( text.size() <= most )
        return text;
    while( most > 0 && isUtf8Continuation( text[ most ] ) )
        --most;
    return text.substr( 0, most ) + "...";
}

/// Follows a JSON pointer through the reader's events and finds out what is there.
class Finder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Finder> {
    using Text = Vessa::String;

  public:
    Finder( std::vector<Text> steps, FileText const& text ) : steps_( std::move( steps ) ), text_( text ) {}

    Text const& found() const { return found_; }
    U32 line() const { return line_; }

    bool Null() { return value( "null" ); }
    bool Bool( bool flag ) { return value( flag ? "true" : "false" ); }
    bool RawNumber( char const* text, rapidjson::SizeType length, bool ) {
        return value( "the number " + cutTo( 60, { text, length } ) );
    }
    bool String( char const* text, rapidjson::SizeType length, bool ) {
        return value( "a string, \"" + cutTo( 60, { text, length } ) + '"' );
    }
    bool Key( char const* name, rapidjson::SizeType length, bool ) {
        open_.back().step.assign( name, length );
        if( open_.size() == steps_.size() + 1 && isOnWay() )
            names_.push_back( open_.back().step );
        return true;
    }
    bool StartObject() { return start( false ); }
    bool StartArray() { return start( true ); }
    bool EndObject( rapidjson::SizeType ) {
        return end( [ this ] { return object(); } );
    }
    bool EndArray( rapidjson::SizeType count ) {
        return end( [ count ] {
            return count == 0 ? "an empty array"
                              : fmt::format( "an array of {} element{}", count, count == 1 ? "" : "s" );
        } );
    }

  private:
    /// An open container, and the step from it to the value that comes.
    struct Container {
        bool isArray;
        std::size_t index = 0; ///< of the next element
        Text step = {};
    };

    /// Whether the steps so far are the pointer's, as far as both go.
    bool isOnWay() const {
        auto const ends =
            std::mismatch( open_.begin(), open_.end(), steps_.begin(), steps_.end(),
                           []( Container const& one, Text const& step ) { return one.step == step; } );
        return ends.first == open_.end() || ends.second == steps_.end();
    }
    /// Takes the step to a value that begins; whether it is the pointer's.
    bool arrives() {
        if( !open_.empty() && open_.back().isArray )
            open_.back().step = std::to_string( open_.back().index++ );
        if( open_.size() != steps_.size() || !isOnWay() )
            return false;
        line_ = text_.line();
        return true;
    }
    bool value( Text const& text ) {
        if( !arrives() )
            return true;
        found_ = text;
        return false;
    }
    bool start( bool isArray ) {
        arrives();
        open_.push_back( { isArray } );
        return true;
    }
    /// False where the value ends, or what should have had the next step.
    template<class Say>
    bool end( Say text ) {
        open_.pop_back();
        if( open_.size() > steps_.size() || !isOnWay() )
            return true;
        if( open_.size() == steps_.size() )
            found_ = text();
        return false;
    }
    Text object() const {
        constexpr std::size_t most = 12;
        Text list;
        for( std::size_t i = 0; i < std::min( most, names_.size() ); ++i )
            list += ( i == 0 ? "\"" : ", \"" ) + cutTo( 60, names_[ i ] ) + '"';
        if( names_.empty() )
            return "an empty object";
        return "an object with " + list + ( names_.size() > most ? ", ..." : "" );
    }

    std::vector<Text> const steps_;
    FileText const& text_;
    std::vector<Container> open_;
    std::vector<Text> names_; // of the object's members
    Text found_;
    U32 line_ = 0;
};

/// The pointer to the value that is to blame; none when there is no such one.
std::optional<String> culpritOf( Fault const& fault ) {
    if( !fault.pointer || fault.culprit.empty() )
        return std::nullopt;
    if( fault.culprit == "." )
        return *fault.pointer;
    return fault.pointer->substr( 0, fault.pointer->rfind( '/' ) ) + '/' + fault.culprit;
}

void addFound( Fault& fault ) {
    auto const culprit = culpritOf( fault );
    if( !fault.inContextFile || !culprit )
        return;
    FileText text( fault.file );
    Finder finder( stepsOf( *culprit ), text );
    rapidjson::Reader reader;
    reader.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag>( text, finder );
    if( finder.found().empty() )
        return;
    fault.found = finder.found();
    fault.line = finder.line();
}

// Handles that lead to no table.

using Context::SurveyedTable;
using Tables = std::vector<SurveyedTable>;

/// What a function says of tables, joined: empty texts are left out, and "..." comes in place of too many.
template<class TextOf>
String fewOf( Tables const& tables, char const* separator, TextOf textOf ) {
    String all;
    int places = 4;
    for( auto table = tables.begin(); table != tables.end() && places >= 0; ++table ) {
        if( String const text = textOf( *table ); !text.empty() )
            all += ( all.empty() ? "" : separator ) + ( places-- > 0 ? text : "..." );
    }
    return all;
}

/// The names of the tables with a handle: `"a", "b", ...`.
String namesWith( U32 handle, Tables const& tables, SurveyedTable const* except = nullptr ) {
    return fewOf( tables, ", ", [ & ]( SurveyedTable const& table ) {
        return &table != except && table.handle == handle ? '"' + table.name + '"' : "";
    } );
}

/// Why a table that lists a handle is not found by it: it is not placed, or another has its own handle, too.
String whyHidden( SurveyedTable const& lister, Tables const& tables ) {
    if( lister.stageTables.empty() )
        return ", but has no stage table";
    String const rivals = lister.handle ? namesWith( *lister.handle, tables, &lister ) : "";
    return rivals.empty()
               ? ""
               : fmt::format( ", but its own handle {} is also that of {}, and the model keeps one of them",
                              hexText( *lister.handle ), rivals );
}

/// Why no table is found that lists a handle, though one must: which tables list it, and whether a second
/// table with one of their handles hides that.
String whoLists( U32 missing, Tables const& tables ) {
    auto const hasIt = [ & ]( auto const& one ) { return one.handle == missing; };
    String text = fewOf( tables, "; ", [ & ]( SurveyedTable const& table ) {
        auto const& all = table.references;
        auto const listing = std::find_if( all.begin(), all.end(), hasIt );
        return listing == all.end() ? ""
                                    : fmt::format( "\"{}\" lists it in \"{}\"{}", table.name, listing->list,
                                                   whyHidden( table, tables ) );
    } );
    if( text.empty() )
        text = "no table that lists it";
    return std::count_if( tables.begin(), tables.end(), hasIt ) > 1
               ? text + "; it is the handle of " + namesWith( missing, tables )
               : text;
}

/// Why a listed handle leads to no placed table: which tables have it.
String whoHas( U32 missing, Tables const& tables ) {
    String const names = namesWith( missing, tables );
    return names.empty() ? "no table with this handle"
                         : "this handle only with tables that are not placed: " + names;
}

/// For a handle that leads to no table: the value that was read last is not what is wrong.
void addHandles( Fault& fault ) {
    bool const isListed = fault.culprit == "handle"; // in the references of the table at fault
    fault.found = ( isListed ? whoHas : whoLists )( *fault.handle, fault.files.back().tables );
}

/// A tab takes one column, so that the caret is at the right place.
String withoutTabs( String text ) {
    std::replace( text.begin(), text.end(), '\t', ' ' );
    return text;
}

constexpr std::string_view blanks = " \t\r\n";

bool isBlank( std::string_view text ) { return text.find_first_not_of( blanks ) == text.npos; }

std::string_view lastLineOf( std::string_view text ) { return text.substr( text.rfind( '\n' ) + 1 ); }

/// The text before a place, as far as an excerpt may show it: the end of its line, and before that of lines
/// that are not blank.
String takeBefore( U32 line, U32 column, FileText& text ) {
    constexpr std::size_t enough = 4096;
    String front;
    while( !text.atEnd() && ( text.line() < line || column-- > 1 ) ) {
        char const c = text.Take();
        if( c == '\n' && isBlank( lastLineOf( front ) ) )
            front.erase( front.size() - lastLineOf( front ).size() );
        else
            front += c;
        if( front.size() > 2 * enough )
            front.erase( 0, enough );
    }
    return front;
}

/// As much of the end of a line as an excerpt shows.
String endOf( String line ) {
    constexpr std::size_t most = 48;
    if( line.size() <= most )
        return withoutTabs( line );
    line.erase( 0, line.size() - most );
    while( !line.empty() && isUtf8Continuation( line.front() ) )
        line.erase( 0, 1 );
    return "..." + withoutTabs( line );
}

/// The end of the text before the column, and the start of the text after it. If the file ends in a line
/// without text, the line before it.
void addExcerpt( Fault& fault ) {
    constexpr std::size_t mostBehind = 24;
    FileText text( fault.file );
    String before = takeBefore( *fault.line, *fault.column, text );
    String behind;
    while( behind.size() <= mostBehind + 4 && !text.atEnd() && text.Peek() != '\n' && text.Peek() != '\r' )
        behind += text.Take();
    if( text.atEnd() && behind.empty() ) {
        fault.found = "the end of the file";
        if( isBlank( lastLineOf( before ) ) )
            before.erase( before.find_last_not_of( blanks ) + 1 );
    }
    fault.excerpt = endOf( String( lastLineOf( before ) ) );
    fault.caret = fault.excerpt.size();
    fault.excerpt += withoutTabs( cutTo( mostBehind, behind ) );
}

using Header = Context::SurveyedHeader;

String sized( Header const& header ) {
    return std::to_string( static_cast<std::int64_t>( header.bits ) ) + " bits";
}

/// The same header in another context file of the configuration.
String otherThan( Header const& header, std::span<Context::FileSurvey const> others ) {
    for( Context::FileSurvey const& file : others ) {
        for( Header const& other : file.headers ) {
            if( other.name == header.name && other.bits != header.bits )
                return ", " + sized( other ) + " in " + file.path;
        }
    }
    return "";
}

constexpr char const* sameSize = "parser->bfHeaders( hdrName ) == header";
constexpr char const* wholeBytes = "header.size() % 8 == 0";

/// For a header with an invalid size: the value that was read last is only its last width.
void addHeader( Fault& fault ) {
    auto const steps = stepsOf( *fault.pointer );
    auto const& headers = fault.files.back().headers;
    std::size_t index = headers.size();
    if( steps.size() > 1 )
        std::from_chars( steps[ 1 ].data(), steps[ 1 ].data() + steps[ 1 ].size(), index );
    if( index >= headers.size() )
        return;
    fault.pointer = "/flexible_headers/" + steps[ 1 ];
    fault.member.clear();
    Header const& header = headers[ index ];
    fault.found = '"' + header.name + "\" of " + sized( header );
    if( fault.condition == sameSize )
        fault.found += otherThan( header, std::span( fault.files ).first( fault.files.size() - 1 ) );
}

/// Whether a file starts with a byte order mark, which JSON readers do not accept.
bool hasByteOrderMark( String const& path ) {
    FileText text( path );
    String front;
    while( front.size() < 3 && !text.atEnd() )
        front += text.Take();
    return front == "\xEF\xBB\xBF" || front.starts_with( "\xFE\xFF" ) || front.starts_with( "\xFF\xFE" );
}

void addSyntax( Fault& fault ) {
    addExcerpt( fault );
    if( *fault.line == 1 && hasByteOrderMark( fault.file ) )
        fault.found = "a file that starts with a byte-order mark";
}

} // namespace

void addEvidence( Fault& fault ) {
    bool const isSurveyed = !fault.files.empty();
    if( fault.line && fault.column )
        addSyntax( fault );
    else if( isSurveyed && fault.pointer && ( fault.condition == sameSize || fault.condition == wholeBytes ) )
        addHeader( fault );
    else
        addFound( fault );
    if( isSurveyed && fault.handle )
        addHandles( fault );
}

} // namespace Bfri
