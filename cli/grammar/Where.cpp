#include "cli/grammar/Where.h"

#include "cli/grammar/Failure.h"
#include "cli/terminal/Characters.h"

#include <cctype>
#include <charconv>
#include <fmt/format.h>
#include <functional>
#include <optional>

namespace Bfri {

namespace {

using Condition = Where::Condition;
using ConditionPtr = std::shared_ptr<Condition const>;

[[noreturn]] void refuseWhere( String const& problem ) {
    throw Failure( ExitStatus::usage, "--where: " + problem );
}

/// Decimal, or hexadecimal with 0x.
std::optional<std::int64_t> numberIn( String const& text ) {
    bool const isHexadecimal = text.starts_with( "0x" ) || text.starts_with( "0X" );
    std::int64_t number = 0;
    char const* const end = text.data() + text.size();
    auto const [ rest, error ] =
        std::from_chars( text.data() + ( isHexadecimal ? 2 : 0 ), end, number, isHexadecimal ? 16 : 10 );
    return error == std::errc() && rest == end ? std::optional( number ) : std::nullopt;
}

/// How two values compare: below, at, above 0.
template<class Type>
int order( Type const& a, Type const& b ) {
    return a < b ? -1 : b < a ? 1 : 0;
}

enum class Operator { equal, unequal, less, most, more, least, matches };

/// A value of a condition, in every type that a field may have.
struct Operand {
    explicit Operand( String const& word ) : text( word ), number( numberIn( word ) ) {}
    String text;
    std::optional<std::int64_t> number;
    std::optional<bool> flag() const {
        if( text == "true" || text == "yes" )
            return true;
        return text == "false" || text == "no" ? std::optional( false ) : std::nullopt;
    }
};

/// How a value compares with an operand; nothing where it can't.
struct ComparedWith {
    Operand const& operand;

    using Result = std::optional<int>;
    Result operator()( std::monostate ) const { return {}; }
    Result operator()( bool flag ) const {
        return operand.flag() ? Result( order( flag, *operand.flag() ) ) : Result();
    }
    Result operator()( U32 number ) const { return ( *this )( std::int64_t{ number } ); }
    Result operator()( Hex number ) const { return ( *this )( number.value ); }
    Result operator()( std::int64_t number ) const {
        return operand.number ? Result( order( number, *operand.number ) ) : Result();
    }
    Result operator()( String const& text ) const { return order( text, operand.text ); }
    Result operator()( List const& ) const { return {}; }
    Result operator()( Row const& ) const { return {}; }
};

class FieldCondition : public Condition {
  public:
    FieldCondition( String field, Operator is, String const& word )
        : field_( std::move( field ) ), operator_( is ), operand_( word ) {
        if( is == Operator::matches )
            pattern_.emplace( word );
    }
    bool holds( Row const& row ) const override {
        bool const isNegation = operator_ == Operator::unequal;
        return anyIs( valueOf( row, field_ ) ) != isNegation;
    }

  private:
    bool anyIs( Value const& value ) const {
        if( auto const* const list = std::get_if<List>( &value.is ) )
            return std::any_of( list->begin(), list->end(),
                                [ & ]( Value const& one ) { return anyIs( one ); } );
        if( auto const* const row = std::get_if<Row>( &value.is ) )
            return std::any_of( row->begin(), row->end(),
                                [ & ]( Field const& one ) { return anyIs( one.value ); } );
        if( pattern_ ) {
            auto const* const text = std::get_if<String>( &value.is );
            return text && pattern_->isIn( *text );
        }
        auto const compared = std::visit( ComparedWith{ operand_ }, value.is );
        return compared && is( *compared );
    }
    bool is( int compared ) const {
        switch( operator_ ) {
        case Operator::less:
            return compared < 0;
        case Operator::most:
            return compared <= 0;
        case Operator::more:
            return compared > 0;
        case Operator::least:
            return compared >= 0;
        default:
            return compared == 0;
        }
    }

    String field_;
    Operator operator_;
    Operand operand_;
    std::optional<Pattern> pattern_ = {};
};

/// Not one, both, or one of two.
struct Combined : Condition {
    Combined( ConditionPtr a, ConditionPtr b,
              bool ( *are )( Condition const&, Condition const&, Row const& ) )
        : left( std::move( a ) ), right( std::move( b ) ), combine( are ) {}
    bool holds( Row const& row ) const override { return combine( *left, *right, row ); }

    ConditionPtr left;
    ConditionPtr right;
    bool ( *combine )( Condition const&, Condition const&, Row const& );
};

bool isFieldCharacter( char c ) { return std::isalnum( static_cast<unsigned char>( c ) ) || c == '_'; }

class WhereParser {
  public:
    WhereParser( std::string_view text, Row const& blank ) : rest_( text ), blank_( blank ) {}

    ConditionPtr whole() {
        auto condition = disjunction();
        skipBlanks();
        if( !rest_.empty() )
            refuseWhere( "'and', 'or' or the end is missing" + here() );
        return condition;
    }

  private:
    static constexpr int deepest = 100;

    ConditionPtr disjunction() {
        auto left = conjunction();
        while( takeWord( "or" ) )
            left = std::make_shared<Combined>( left, conjunction(),
                                               []( auto const& a, auto const& b, Row const& row ) {
                                                   return a.holds( row ) || b.holds( row );
                                               } );
        return left;
    }
    ConditionPtr conjunction() {
        auto left = negation();
        while( takeWord( "and" ) )
            left = std::make_shared<Combined>( left, negation(),
                                               []( auto const& a, auto const& b, Row const& row ) {
                                                   return a.holds( row ) && b.holds( row );
                                               } );
        return left;
    }
    ConditionPtr negation() {
        if( ++depth_ > deepest )
            refuseWhere( "too many parentheses and nots" );
        ConditionPtr condition;
        if( takeWord( "not" ) ) {
            auto const inner = negation();
            condition = std::make_shared<Combined>(
                inner, inner, []( auto const& a, auto const&, Row const& row ) { return !a.holds( row ); } );
        } else if( takeCharacter( '(' ) ) {
            condition = disjunction();
            if( !takeCharacter( ')' ) )
                refuseWhere( "')' is missing" + here() );
        } else
            condition = comparison();
        --depth_;
        return condition;
    }
    ConditionPtr comparison() {
        String const field = takeField();
        Operator const is = takeOperator();
        String const word = takeValue();
        requireFit( field, is, word );
        return std::make_shared<FieldCondition>( field, is, word );
    }
    String takeField() {
        skipBlanks();
        std::size_t length = 0;
        while( length < rest_.size() && isFieldCharacter( rest_[ length ] ) )
            ++length;
        String name( rest_.substr( 0, length ) );
        std::vector<String> names;
        for( Field const& field : blank_ )
            names.emplace_back( field.name );
        if( std::find( names.begin(), names.end(), name ) == names.end() )
            refuseWhere(
                ( name.empty() ? "a field is missing" + here() : fmt::format( "no field '{}'", name ) ) +
                "; the fields are " + fmt::format( "{}", fmt::join( names, ", " ) ) );
        rest_.remove_prefix( length );
        return name;
    }
    Operator takeOperator() {
        static constexpr std::pair<std::string_view, Operator> operators[] = {
            { "==", Operator::equal }, { "!=", Operator::unequal }, { "<=", Operator::most },
            { ">=", Operator::least }, { "~=", Operator::matches }, { "=", Operator::equal },
            { "<", Operator::less },   { ">", Operator::more } };
        skipBlanks();
        for( auto const& [ text, is ] : operators ) {
            if( rest_.starts_with( text ) ) {
                rest_.remove_prefix( text.size() );
                return is;
            }
        }
        refuseWhere( "=, !=, <, <=, >, >= or ~= is missing" + here() );
    }
    String takeValue() {
        skipBlanks();
        if( rest_.starts_with( '\'' ) || rest_.starts_with( '"' ) ) {
            auto const end = rest_.find( rest_[ 0 ], 1 );
            if( end == rest_.npos )
                refuseWhere( "a quote has no end" + here() );
            String value( rest_.substr( 1, end - 1 ) );
            rest_.remove_prefix( end + 1 );
            return value;
        }
        std::size_t length = 0;
        for( int open = 0; length < rest_.size() && rest_[ length ] != ' '; ++length ) {
            open += rest_[ length ] == '(' ? 1 : rest_[ length ] == ')' ? -1 : 0;
            if( open < 0 ) // it closes what is around the comparison
                break;
        }
        if( length == 0 )
            refuseWhere( "a value is missing" + here() );
        String value( rest_.substr( 0, length ) );
        rest_.remove_prefix( length );
        return value;
    }
    /// Numbers and flags have values of their own.
    void requireFit( String const& field, Operator is, String const& word ) const {
        Value const& value = valueOf( blank_, field );
        bool const isFlag = std::holds_alternative<bool>( value.is );
        bool const isNumber =
            std::holds_alternative<U32>( value.is ) || std::holds_alternative<Hex>( value.is );
        Operand const operand( word );
        if( is == Operator::matches && ( isFlag || isNumber ) )
            refuseWhere( fmt::format( "~= is for texts, but {} is not a text", field ) );
        if( ( isFlag && !operand.flag() ) || ( isNumber && !operand.number ) )
            refuseWhere( fmt::format( "{} is {}, not '{}'", field, isFlag ? "true or false" : "a number",
                                      escapeForTerminal( word ) ) );
    }
    bool takeWord( std::string_view word ) {
        skipBlanks();
        bool const isWhole = rest_.size() == word.size() ||
                             ( rest_.size() > word.size() && !isFieldCharacter( rest_[ word.size() ] ) );
        if( !rest_.starts_with( word ) || !isWhole )
            return false;
        rest_.remove_prefix( word.size() );
        return true;
    }
    bool takeCharacter( char c ) {
        skipBlanks();
        if( !rest_.starts_with( c ) )
            return false;
        rest_.remove_prefix( 1 );
        return true;
    }
    void skipBlanks() { rest_.remove_prefix( std::min( rest_.find_first_not_of( ' ' ), rest_.size() ) ); }
    String here() const {
        return rest_.empty() ? String( " at the end" ) : " before '" + escapeForTerminal( rest_ ) + "'";
    }

    std::string_view rest_;
    Row const& blank_;
    int depth_ = 0;
};

} // namespace

Where::Where( String const& text, Row const& blank ) : condition_( WhereParser( text, blank ).whole() ) {}

} // namespace Bfri
