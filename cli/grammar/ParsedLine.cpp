#include "cli/grammar/ParsedLine.h"

#include "inspect/model/RecordKinds.h"

namespace Bfri {

Word const* ParsedLine::argumentOf( ValueKind kind ) const {
    auto const found = std::find_if( words.begin(), words.end(), [ & ]( Word const& word ) {
        return word.role == Role::argument && word.type().kind == kind;
    } );
    return found == words.end() ? nullptr : &*found;
}

RecordKind const* ParsedLine::recordKind() const {
    Word const* const word = argumentOf( ValueKind::recordKind );
    return word ? kindOf( word->text ) : nullptr;
}

} // namespace Bfri
