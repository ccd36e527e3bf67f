#include "tests/support/JsonTree.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <utility>

namespace Support {

namespace {

/// A pointer's way to the last step, and that step.
struct Split {
    std::string_view parent;
    std::string_view step;
};

Split split( std::string_view pointer ) {
    auto const slash = pointer.rfind( '/' );
    if( slash == std::string_view::npos )
        throw std::out_of_range( "no place: " + std::string( pointer ) );
    return { pointer.substr( 0, slash ), pointer.substr( slash + 1 ) };
}

std::string quoted( std::string_view text ) {
    std::string result = "\"";
    for( char const c : text ) {
        if( c == '"' || c == '\\' ) {
            result += { '\\', c };
        } else if( static_cast<unsigned char>( c ) < 0x20 ) {
            char escape[ 8 ];
            std::snprintf( escape, sizeof escape, "\\u%04x", static_cast<unsigned>( c ) );
            result += escape;
        } else {
            result += c;
        }
    }
    return result + "\"";
}

} // namespace

/// Reads texts without escapes in member names, which is all that tests write.
class JsonTree::Parser {
  public:
    explicit Parser( std::string_view text ) : rest_( text ) {}

    JsonTree whole() {
        JsonTree result = value();
        if( !skipSpace().empty() )
            fail();
        return result;
    }

  private:
    JsonTree value() {
        skipSpace();
        if( take( '{' ) )
            return container( Kind::object, '}' );
        if( take( '[' ) )
            return container( Kind::array, ']' );
        return scalar( std::string( startsWith( '"' ) ? literal() : word() ) );
    }
    JsonTree container( Kind kind, char end ) {
        JsonTree result( kind );
        skipSpace();
        if( take( end ) )
            return result;
        do {
            skipSpace();
            std::string name;
            if( kind == Kind::object ) {
                std::string_view const text = literal();
                name = text.substr( 1, text.size() - 2 );
                skipSpace();
                expect( ':' );
            }
            result.add( name, value() );
            skipSpace();
        } while( take( ',' ) );
        expect( end );
        return result;
    }
    std::string_view literal() {
        if( !startsWith( '"' ) )
            fail();
        std::size_t end = 1;
        while( end < rest_.size() && rest_[ end ] != '"' )
            end += rest_[ end ] == '\\' ? 2 : 1;
        if( end >= rest_.size() )
            fail();
        return takeFront( end + 1 );
    }
    std::string_view word() {
        auto const end = std::min( rest_.find_first_of( " \t\r\n,:[]{}\"" ), rest_.size() );
        if( end == 0 )
            fail();
        return takeFront( end );
    }

    bool startsWith( char c ) const { return !rest_.empty() && rest_.front() == c; }
    bool take( char c ) {
        bool const there = startsWith( c );
        rest_.remove_prefix( there );
        return there;
    }
    void expect( char c ) {
        if( !take( c ) )
            fail();
    }
    std::string_view takeFront( std::size_t count ) {
        std::string_view const front = rest_.substr( 0, count );
        rest_.remove_prefix( count );
        return front;
    }
    std::string_view skipSpace() {
        rest_.remove_prefix( std::min( rest_.find_first_not_of( " \t\r\n" ), rest_.size() ) );
        return rest_;
    }
    [[noreturn]] void fail() const {
        throw std::invalid_argument( "not JSON from here: " + std::string( rest_ ) );
    }

    std::string_view rest_;
};

JsonTree::JsonTree( std::string_view json ) { *this = Parser( json ).whole(); }

JsonTree JsonTree::scalar( std::string text ) {
    JsonTree result( Kind::scalar );
    result.scalar_ = std::move( text );
    return result;
}

JsonTree JsonTree::string( std::string_view text ) { return scalar( quoted( text ) ); }

std::size_t JsonTree::indexOf( std::string_view step ) const {
    if( kind_ == Kind::object )
        return static_cast<std::size_t>( std::find( names_.begin(), names_.end(), step ) - names_.begin() );
    bool const isIndex = !step.empty() && step.find_first_not_of( "0123456789" ) == std::string_view::npos;
    return isIndex ? std::min( std::size_t( std::stoul( std::string( step ) ) ), children_.size() )
                   : children_.size();
}

void JsonTree::add( std::string_view name, JsonTree value ) {
    names_.emplace_back( name );
    children_.push_back( std::move( value ) );
}

JsonTree const* JsonTree::find( std::string_view pointer ) const {
    if( pointer.empty() )
        return this;
    auto const [ parent, step ] = split( pointer );
    JsonTree const* const holder = find( parent );
    if( !holder )
        return nullptr;
    std::size_t const index = holder->indexOf( step );
    return index < holder->children_.size() ? &holder->children_[ index ] : nullptr;
}

JsonTree const& JsonTree::at( std::string_view pointer ) const {
    if( JsonTree const* const found = find( pointer ) )
        return *found;
    throw std::out_of_range( "nothing at " + std::string( pointer ) + " in " + text() );
}

JsonTree& JsonTree::at( std::string_view pointer ) {
    return const_cast<JsonTree&>( std::as_const( *this ).at( pointer ) );
}

JsonTree& JsonTree::with( std::string_view pointer, JsonTree value ) {
    if( has( pointer ) ) {
        at( pointer ) = std::move( value );
        return *this;
    }
    auto const [ parent, step ] = split( pointer );
    JsonTree& holder = at( parent );
    bool const fits = holder.kind_ == Kind::object || ( holder.kind_ == Kind::array && step == "-" );
    if( !fits )
        throw std::out_of_range( "no place to add: " + std::string( pointer ) );
    holder.add( holder.kind_ == Kind::object ? step : "", std::move( value ) );
    return *this;
}

JsonTree& JsonTree::withFirst( std::string_view pointer, JsonTree value ) {
    auto const [ parent, step ] = split( pointer );
    JsonTree& holder = at( parent );
    if( holder.kind_ != Kind::object )
        throw std::out_of_range( "no place for a member: " + std::string( pointer ) );
    holder.names_.insert( holder.names_.begin(), std::string( step ) );
    holder.children_.insert( holder.children_.begin(), std::move( value ) );
    return *this;
}

JsonTree& JsonTree::without( std::string_view pointer ) {
    at( pointer ); // must exist
    auto const [ parent, step ] = split( pointer );
    JsonTree& holder = at( parent );
    auto const index = static_cast<std::ptrdiff_t>( holder.indexOf( step ) );
    holder.names_.erase( holder.names_.begin() + index );
    holder.children_.erase( holder.children_.begin() + index );
    return *this;
}

std::vector<std::string> JsonTree::pointers() const {
    std::vector<std::string> result;
    collect( "", result );
    return result;
}

void JsonTree::collect( std::string const& prefix, std::vector<std::string>& pointers ) const {
    for( std::size_t i = 0; i < children_.size(); ++i ) {
        pointers.push_back( prefix + "/" + ( kind_ == Kind::object ? names_[ i ] : std::to_string( i ) ) );
        children_[ i ].collect( std::string( pointers.back() ), pointers );
    }
}

std::string JsonTree::text() const {
    if( kind_ == Kind::scalar )
        return scalar_;
    bool const isObject = kind_ == Kind::object;
    std::string result( 1, isObject ? '{' : '[' );
    for( std::size_t i = 0; i < children_.size(); ++i ) {
        if( i != 0 )
            result += ',';
        if( isObject )
            result += quoted( names_[ i ] ) + ":";
        result += children_[ i ].text();
    }
    return result + ( isObject ? '}' : ']' );
}

} // namespace Support
