#include "cli/grammar/ValueCheck.h"

#include "inspect/model/RecordKinds.h"

namespace Bfri {

namespace {

template<class Words>
bool isOneOf( Words const& words, String const& value ) {
    return std::find( words.begin(), words.end(), value ) != words.end();
}

bool isNumber( String const& value ) {
    return !value.empty() && value.find_first_not_of( "0123456789" ) == String::npos;
}

/// With an unknown kind of record on the line, that is the mistake.
bool isField( ParsedLine const& line, String const& value ) {
    RecordKind const* const kind = line.recordKind();
    return !kind || isOneOf( fieldsOf( *kind ), value );
}

bool isOrder( ParsedLine const& line, String const& value ) {
    return isOneOf( fieldsOf( *line.command->listing ), value.substr( value.starts_with( '-' ) ? 1 : 0 ) );
}

bool isOfType( Program const& program, ParsedLine const& line, ValueType const& type, String const& value ) {
    switch( type.kind ) {
    case ValueKind::number:
        return isNumber( value );
    case ValueKind::choice:
        return isOneOf( type.choices, value );
    case ValueKind::file:
        return !value.empty();
    case ValueKind::command:
        return findCommand( program, value );
    case ValueKind::recordKind:
        return kindOf( value );
    case ValueKind::field:
        return isField( line, value );
    case ValueKind::order:
        return isOrder( line, value );
    case ValueKind::text:
    case ValueKind::table:
    case ValueKind::name:
    case ValueKind::handle:
    case ValueKind::codes:
    case ValueKind::codesOrAll:
    case ValueKind::noticeCode:
        return true;
    }
    return true;
}

} // namespace

std::optional<UsageError> wrongValueIn( Program const& program, ParsedLine const& line ) {
    for( std::size_t i = 0; i < line.words.size(); ++i ) {
        Word const& word = line.words[ i ];
        if( !word.valueAt || isOfType( program, line, word.type(), word.value() ) )
            continue;
        Option const* const option = word.argument ? nullptr : word.options.back();
        return UsageError{ Mistake::wrongValue, word.value(), option, nullptr, word.argument, i };
    }
    return std::nullopt;
}

} // namespace Bfri
