#include "tests/resourceinfo/parser/context/RandomJson.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace Support {

namespace {

using Kind = RandomJson::Kind;

/// The spellings of a row are read as equal numbers of one type; no two rows are.
std::vector<std::string> const numbers[] = {
    { "0", "-0" },
    { "0.0", "-0.0", "0e7", "0.000E-3", "-0e0" },
    { "1" },
    { "1.0", "1e0", "1.00", "10e-1", "1E+00", "0.1e1" },
    { "-1" },
    { "-1.0", "-1e0", "-10.0e-1" },
    { "100" },
    { "100.0", "1e2", "1E+2", "100.000", "1000e-1" },
    { "2.5", "25e-1", "0.25E1", "2.500" },
    { "4294967295" },
    { "4294967296" },
    { "9223372036854775808" },
    { "18446744073709551615" },
    { "-9223372036854775808" },
    { "1e300", "1E300", "1.0e+300" },
};

char32_t const letters[] = { U'a',    U'b',  U'/', U'"', U'\\', U'\n',
                             U'\x01', U'\0', U'é', U'€', U'😀',  U'\U0010FFFF' };

std::u32string randomText( Random& random ) {
    std::u32string text;
    for( std::size_t i = random.below( 5 ); i > 0; --i )
        text += random.oneOf( letters );
    return text;
}

std::u32string randomName( Random& random ) {
    static std::u32string const names[] = { U"name",         U"handle",         U"size", U"x",
                                            U"other member", U"static_entries", U"" };
    return random.oneIn( 4 ) ? randomText( random ) : random.oneOf( names );
}

void add( RandomJson& object, std::u32string name, RandomJson value ) {
    object.names.push_back( std::move( name ) );
    object.children.push_back( std::move( value ) );
}

RandomJson randomScalar( Random& random ) {
    RandomJson value;
    value.kind = random.oneOf( std::to_array(
        { Kind::null, Kind::no, Kind::yes, Kind::number, Kind::number, Kind::string, Kind::string } ) );
    if( value.kind == Kind::number )
        value.number = random.below( std::size( numbers ) );
    if( value.kind == Kind::string )
        value.text = randomText( random );
    return value;
}

RandomJson randomValue( Random& random, unsigned depth ) {
    if( depth == 0 || random.oneIn( 2 ) )
        return randomScalar( random );
    RandomJson value;
    value.kind = random.oneIn( 2 ) ? Kind::array : Kind::object;
    for( std::size_t i = random.below( 4 ); i > 0; --i ) {
        if( value.kind == Kind::object )
            value.names.push_back( randomName( random ) );
        value.children.push_back( randomValue( random, depth - 1 ) );
    }
    return value;
}

RandomJson randomElement( Random& random ) {
    if( random.oneIn( 8 ) )
        return randomValue( random, 2 );
    RandomJson element;
    element.kind = Kind::object;
    static std::u32string const names[] = { U"match_attributes", U"actions", U"name", U"memory" };
    for( std::size_t i = random.below( 4 ); i > 0; --i )
        add( element, random.oneIn( 5 ) ? randomName( random ) : random.oneOf( names ),
             randomValue( random, 2 ) );
    return element;
}

void writeUnit( std::string& out, unsigned unit ) {
    char const* const digits = "0123456789abcDEF";
    out += "\\u";
    for( int shift = 12; shift >= 0; shift -= 4 )
        out += digits[ unit >> shift & 15 ];
}

void writeUtf8( std::string& out, char32_t c ) {
    auto const byte = [ & ]( char32_t value ) { out += static_cast<char>( value ); };
    if( c < 0x80 )
        return byte( c );
    int const tails = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    byte( ( tails == 1 ? 0xC0 : tails == 2 ? 0xE0 : 0xF0 ) | c >> 6 * tails );
    for( int tail = tails - 1; tail >= 0; --tail )
        byte( 0x80 | ( c >> 6 * tail & 0x3F ) );
}

void writeLetter( std::string& out, char32_t c, Random& random ) {
    static std::map<char32_t, char const*> const shorts = {
        { U'"', "\\\"" }, { U'\\', "\\\\" }, { U'/', "\\/" }, { U'\n', "\\n" } };
    auto const found = shorts.find( c );
    if( found != shorts.end() && random.oneIn( 2 ) ) {
        out += found->second;
    } else if( c < U' ' || c == U'"' || c == U'\\' || random.oneIn( 3 ) ) {
        if( c >= 0x10000 )
            writeUnit( out, 0xD800 + ( ( c - 0x10000 ) >> 10 ) );
        writeUnit( out, c >= 0x10000 ? 0xDC00 + ( c & 0x3FF ) : c );
    } else
        writeUtf8( out, c );
}

void writeText( std::string& out, std::u32string const& text, Random& random ) {
    out += '"';
    for( char32_t const c : text )
        writeLetter( out, c, random );
    out += '"';
}

void writeSpace( std::string& out, Random& random ) {
    static std::string const spaces[] = { "", "", " ", "\n", "\r\n\t", "    ", std::string( 40, ' ' ) };
    out += random.oneOf( spaces );
}

/// Positions of the children, in an order by chance.
std::vector<std::size_t> orderOf( RandomJson const& value, Random& random ) {
    std::vector<std::size_t> order( value.children.size() );
    for( std::size_t i = 0; i < order.size(); ++i ) {
        order[ i ] = i;
        for( std::size_t at = i; value.kind == Kind::object && at > 0 && random.oneIn( 2 ); --at ) {
            if( value.names[ order[ at - 1 ] ] == value.names[ i ] )
                break;
            std::swap( order[ at - 1 ], order[ at ] );
        }
    }
    return order;
}

void write( std::string& out, RandomJson const& value, Random& random ) {
    static char const* const words[] = { "null", "false", "true" };
    writeSpace( out, random );
    if( value.kind == Kind::number )
        out += random.oneOf( numbers[ value.number ] );
    else if( value.kind == Kind::string )
        writeText( out, value.text, random );
    else if( !value.isContainer() )
        out += words[ static_cast<int>( value.kind ) ];
    else {
        char separator = value.kind == Kind::array ? '[' : '{';
        for( std::size_t const child : orderOf( value, random ) ) {
            out += std::exchange( separator, ',' );
            writeSpace( out, random );
            if( value.kind == Kind::object ) {
                writeText( out, value.names[ child ], random );
                writeSpace( out, random );
                out += ':';
            }
            write( out, value.children[ child ], random );
        }
        if( separator != ',' )
            out += separator;
        out += value.kind == Kind::array ? ']' : '}';
    }
    writeSpace( out, random );
}

/// With the length in front, so that it ends.
void addText( std::string& out, std::u32string const& text ) {
    out += static_cast<char>( text.size() );
    out.append( reinterpret_cast<char const*>( text.data() ), text.size() * sizeof( char32_t ) );
}

void addCanonical( std::string& out, RandomJson const& value ) {
    out += static_cast<char>( value.kind );
    out += static_cast<char>( value.number );
    addText( out, value.text );
    std::vector<std::size_t> order( value.children.size() );
    for( std::size_t i = 0; i < order.size(); ++i )
        order[ i ] = i;
    if( value.kind == Kind::object )
        std::stable_sort( order.begin(), order.end(),
                          [ & ]( auto a, auto b ) { return value.names[ a ] < value.names[ b ]; } );
    for( std::size_t const child : order ) {
        if( value.kind == Kind::object )
            addText( out, value.names[ child ] );
        addCanonical( out, value.children[ child ] );
    }
    out += '\xFF'; // no kind of a value, and no length of a name
}

template<class Suits>
RandomJson* oneThat( RandomJson& value, Random& random, Suits suits ) {
    std::vector<RandomJson*> found = value.all();
    found.erase( std::remove_if( found.begin(), found.end(), [ & ]( auto* one ) { return !suits( *one ); } ),
                 found.end() );
    return found.empty() ? nullptr : random.oneOf( found );
}

void apply( RandomJson& at, Edit edit, Random& random ) {
    std::size_t const count = at.children.size();
    std::size_t const child = count == 0 ? 0 : random.below( count );
    auto const distance = static_cast<std::ptrdiff_t>( child );
    switch( edit ) {
    case Edit::scalar:
        at = randomScalar( random );
        break;
    case Edit::letter:
        at.text[ random.below( at.text.size() ) ] = random.oneOf( letters );
        break;
    case Edit::type:
        at.number ^= 1; // the first rows are integers, each with the real number of its value
        break;
    case Edit::rename:
        at.names[ child ] = randomName( random );
        break;
    case Edit::swap:
        std::swap( at.children[ child ], at.children[ random.below( count ) ] );
        break;
    case Edit::add:
        at.children.insert( at.children.begin() + distance, randomValue( random, 1 ) );
        if( at.kind == Kind::object )
            at.names.insert( at.names.begin() + distance, randomName( random ) );
        break;
    case Edit::remove:
        at.children.erase( at.children.begin() + distance );
        if( at.kind == Kind::object )
            at.names.erase( at.names.begin() + distance );
        break;
    case Edit::container:
        at.kind = at.kind == Kind::array ? Kind::object : Kind::array; // of an empty one
    }
}

bool suits( RandomJson const& value, Edit edit ) {
    switch( edit ) {
    case Edit::scalar:
        return !value.isContainer();
    case Edit::letter:
        return value.kind == Kind::string && !value.text.empty();
    case Edit::type:
        return value.kind == Kind::number && value.number < 8;
    case Edit::rename:
        return !value.names.empty();
    case Edit::swap:
        return value.children.size() > 1;
    case Edit::add:
        return value.isContainer();
    case Edit::remove:
        return !value.children.empty();
    default:
        return value.isContainer() && value.children.empty();
    }
}

} // namespace

std::vector<RandomJson*> RandomJson::all() {
    std::vector<RandomJson*> values = { this };
    for( RandomJson& child : children ) {
        for( RandomJson* const value : child.all() )
            values.push_back( value );
    }
    return values;
}

RandomJson randomContext( Random& random ) {
    static std::u32string const lists[] = {
        U"tables",        U"tables", U"learn_quanta", U"flexible_headers", U"dynamic_hash_calculations",
        U"phv_allocation" };
    RandomJson context;
    context.kind = Kind::object;
    for( std::size_t i = 1 + random.below( 5 ); i > 0; --i ) {
        RandomJson list;
        list.kind = Kind::array;
        for( std::size_t elements = random.below( 4 ); elements > 0; --elements )
            list.children.push_back( randomElement( random ) );
        add( context, random.oneOf( lists ), std::move( list ) );
        if( random.oneIn( 2 ) )
            add( context, randomName( random ), randomValue( random, 3 ) );
    }
    return context;
}

std::string canonical( RandomJson const& value ) {
    std::string out;
    addCanonical( out, value );
    return out;
}

std::string utf8( std::u32string const& text ) {
    std::string out;
    for( char32_t const c : text )
        writeUtf8( out, c );
    return out;
}

std::string written( RandomJson const& value, Random& random ) {
    std::string out;
    write( out, value, random );
    return out;
}

bool edited( RandomJson& value, Edit edit, Random& random ) {
    std::string const before = canonical( value );
    RandomJson* const at =
        oneThat( value, random, [ & ]( RandomJson const& one ) { return suits( one, edit ); } );
    if( !at )
        return false;
    apply( *at, edit, random );
    return canonical( value ) != before;
}

} // namespace Support
