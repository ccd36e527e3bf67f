#include "cli/grammar/Where.h"

#include "cli/grammar/Commands.h"
#include "cli/grammar/Pattern.h"
#include "cli/terminal/Characters.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <fmt/format.h>

namespace Bfri {

namespace {

/// A value of a condition, in every type that a field may have.
struct Operand {
    explicit Operand( String const& word ) : text( word ) {
        bool const isHexadecimal = text.starts_with( "0x" ) || text.starts_with( "0X" );
        std::int64_t value = 0;
        char const* const end = text.data() + text.size();
        auto const [ rest, error ] =
            std::from_chars( text.data() + ( isHexadecimal ? 2 : 0 ), end, value, isHexadecimal ? 16 : 10 );
        if( error == std::errc() && rest == end )
            number = value;
        if( text == "true" || text == "yes" || text == "false" || text == "no" )
            flag = text == "true" || text == "yes";
    }
    String text;
    std::optional<std::int64_t> number;
    std::optional<bool> flag;
};

/// How a value compares with an operand: below, at, above 0; nothing where it can't.
struct ComparedWith {
    Operand const& operand;

    template<class Type>
    static std::optional<int> order( Type const& a, std::optional<Type> const& b ) {
        return b ? std::optional( a < *b ? -1 : *b < a ? 1 : 0 ) : std::nullopt;
    }
    auto operator()( bool flag ) const { return order( flag, operand.flag ); }
    auto operator()( std::int64_t number ) const { return order( number, operand.number ); }
    auto operator()( U32 number ) const { return order( std::int64_t{ number }, operand.number ); }
    auto operator()( Hex number ) const { return ( *this )( number.value ); }
    auto operator()( String const& text ) const { return std::optional( text.compare( operand.text ) ); }
    template<class Other>
    std::optional<int> operator()( Other const& ) const {
        return {};
    }
};

/// Whether a value, or one in it, is as wanted.
template<class Wanted>
bool anyIs( Value const& value, Wanted const& wanted ) {
    auto const isIn = [ & ]( Value const& one ) { return anyIs( one, wanted ); };
    if( auto const* const list = std::get_if<List>( &value.is ) )
        return std::ranges::any_of( *list, isIn );
    if( auto const* const row = std::get_if<Row>( &value.is ) )
        return std::ranges::any_of( *row, isIn, &Field::value );
    return wanted( value );
}

struct Operator {
    std::string_view text;
    bool ( *holds )( int compared ); ///< null for ~=
};

constexpr Operator operators[] = {
    { "==", []( int compared ) { return compared == 0; } },
    { "!=", []( int compared ) { return compared == 0; } }, // negated as a whole
    { "<=", []( int compared ) { return compared <= 0; } },
    { ">=", []( int compared ) { return compared >= 0; } },
    { "~=", nullptr },
    { "=", []( int compared ) { return compared == 0; } },
    { "<", []( int compared ) { return compared < 0; } },
    { ">", []( int compared ) { return compared > 0; } } };

Condition comparison( std::string_view field, Operator const& is, String const& word ) {
    if( !is.holds )
        return [ field, pattern = Pattern( word, "--where" ) ]( Row const& row ) {
            return anyIs( valueOf( row, field ), [ & ]( Value const& value ) {
                auto const* const text = std::get_if<String>( &value.is );
                return text && pattern.isIn( *text );
            } );
        };
    return [ field, is, operand = Operand( word ) ]( Row const& row ) {
        bool const isSo = anyIs( valueOf( row, field ), [ & ]( Value const& value ) {
            auto const compared = std::visit( ComparedWith{ operand }, value.is );
            return compared && is.holds( *compared );
        } );
        return isSo != ( is.text == "!=" );
    };
}

bool isFieldCharacter( char c ) { return std::isalnum( static_cast<unsigned char>( c ) ) || c == '_'; }

class WhereParser {
  public:
    WhereParser( std::string_view text, Row const& blank ) : text_( text ), rest_( text ), blank_( blank ) {}

    Condition whole() {
        auto condition = disjunction();
        skipBlanks();
        if( !rest_.empty() )
            refuseExpected( "'and', 'or' or the end" );
        return condition;
    }

    /// Where the name of a field starts that may go on after the end of the text.
    std::optional<std::size_t> fieldAtEnd() const { return fieldAtEnd_; }

  private:
    static constexpr int deepest = 100;

    Condition disjunction() {
        auto left = conjunction();
        while( takeWord( "or" ) )
            left = [ a = std::move( left ), b = conjunction() ]( Row const& row ) {
                return a( row ) || b( row );
            };
        return left;
    }
    Condition conjunction() {
        auto left = negation();
        while( takeWord( "and" ) )
            left = [ a = std::move( left ), b = negation() ]( Row const& row ) {
                return a( row ) && b( row );
            };
        return left;
    }
    Condition negation() {
        if( ++depth_ > deepest )
            refuse( "too many parentheses and nots" );
        Condition condition;
        if( takeWord( "not" ) )
            condition = [ a = negation() ]( Row const& row ) { return !a( row ); };
        else if( take( "(" ) ) {
            condition = disjunction();
            if( !take( ")" ) )
                refuseExpected( "')'" );
        } else {
            Field const& field = takeField();
            Operator const& is = takeOperator();
            String const word = takeValue();
            requireFit( field, is, word );
            condition = comparison( field.name, is, word );
        }
        --depth_;
        return condition;
    }
    Field const& takeField() {
        skipBlanks();
        std::string_view const name = ahead( std::ranges::find_if_not( rest_, isFieldCharacter ) );
        bool const isApart = !name.empty() || text_.empty() || !isFieldCharacter( text_.back() );
        if( name.size() == rest_.size() && isApart )
            fieldAtEnd_ = text_.size() - rest_.size();
        auto const found = std::ranges::find( blank_, name, &Field::name );
        if( found == blank_.end() ) {
            String const problem =
                name.empty() ? "expected a field, found " + here() : fmt::format( "no field '{}'", name );
            refuse( fmt::format( "{}; the fields are {}", problem,
                                 fmt::join( textsOf( blank_, &Field::name ), ", " ) ) );
        }
        rest_.remove_prefix( name.size() );
        return *found;
    }
    Operator const& takeOperator() {
        for( Operator const& one : operators ) {
            if( take( one.text ) )
                return one;
        }
        refuseExpected( "=, !=, <, <=, >, >= or ~=" );
    }
    String takeValue() {
        skipBlanks();
        if( rest_.starts_with( '\'' ) || rest_.starts_with( '"' ) ) {
            auto const end = rest_.find( rest_[ 0 ], 1 );
            if( end == rest_.npos )
                refuse( "unterminated quote at " + here() );
            String value( rest_.substr( 1, end - 1 ) );
            rest_.remove_prefix( end + 1 );
            return value;
        }
        int open = 0; // a parenthesis too many closes what is around the comparison
        String value( ahead( std::ranges::find_if( rest_, [ & ]( char c ) {
            open += c == '(' ? 1 : c == ')' ? -1 : 0;
            return c == ' ' || open < 0;
        } ) ) );
        if( value.empty() )
            refuseExpected( "a value" );
        rest_.remove_prefix( value.size() );
        return value;
    }
    /// Numbers and flags have values of their own, and flags no order.
    static void requireFit( Field const& field, Operator const& is, String const& word ) {
        auto const& value = field.value.is;
        bool const isFlag = std::holds_alternative<bool>( value );
        bool const isNumber = std::holds_alternative<U32>( value ) || std::holds_alternative<Hex>( value );
        char const* const type = isFlag ? "true or false" : "a number";
        Operand const operand( word );
        if( !is.holds && ( isFlag || isNumber ) )
            refuse( fmt::format( "~= needs a text field; {} is {}", field.name, type ) );
        if( isFlag && ( is.text[ 0 ] == '<' || is.text[ 0 ] == '>' ) )
            refuse( fmt::format( "{} is {}, which takes = and != only", field.name, type ) );
        if( ( isFlag && !operand.flag ) || ( isNumber && !operand.number ) )
            refuse( fmt::format( "{} is {}, not '{}'", field.name, type, escapeForTerminal( word ) ) );
    }
    std::string_view ahead( std::string_view::iterator end ) const { return { rest_.begin(), end }; }
    bool takeWord( std::string_view word ) {
        skipBlanks();
        if( rest_.size() > word.size() && isFieldCharacter( rest_[ word.size() ] ) )
            return false;
        return take( word );
    }
    bool take( std::string_view text ) {
        skipBlanks();
        bool const isNext = rest_.starts_with( text );
        rest_.remove_prefix( isNext ? text.size() : 0 );
        return isNext;
    }
    void skipBlanks() { rest_.remove_prefix( std::min( rest_.find_first_not_of( ' ' ), rest_.size() ) ); }
    [[noreturn]] static void refuse( String const& problem ) {
        throw Failure( ExitStatus::usage, "--where: " + problem );
    }
    [[noreturn]] void refuseExpected( char const* what ) const {
        refuse( fmt::format( "expected {}, found {}", what, here() ) );
    }
    /// What comes next, for a message.
    String here() const {
        return rest_.empty() ? String( "the end" ) : "'" + escapeForTerminal( rest_ ) + "'";
    }

    std::string_view const text_;
    std::string_view rest_;
    Row const& blank_;
    int depth_ = 0;
    std::optional<std::size_t> fieldAtEnd_ = {};
};

} // namespace

Condition conditionOf( String const& text, Row const& blank ) { return WhereParser( text, blank ).whole(); }

std::optional<std::size_t> fieldAtEnd( String const& text, Row const& blank ) {
    WhereParser parser( text, blank );
    try {
        parser.whole();
    } catch( Failure const& ) { // the condition is not finished
    }
    return parser.fieldAtEnd();
}

} // namespace Bfri
