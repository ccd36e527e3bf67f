#include "cli/grammar/WrongWord.h"
#include "cli/terminal/Characters.h"

#include "cli/Failure.h"
#include "inspect/model/Names.h"

namespace Bfri {

namespace {

[[noreturn]] void refuse( String const& what, std::vector<String> const& words, String const& word,
                          String const& all ) {
    String const meant = whatWasMeant( words, word );
    throw Failure( ExitStatus::usage, what + " '" + escapeForTerminal( word ) + "'" +
                                          ( meant.empty() ? "." : meant ) + " " + all + " are " +
                                          joined( words ) );
}

} // namespace

String whatWasMeant( std::vector<String> const& words, std::string_view word ) {
    String meant;
    for( String const& near : nearest( words, word ) )
        meant += ( meant.empty() ? "; did you mean '" : "' or '" ) + near;
    return meant + ( meant.empty() ? "" : "'?" );
}

String joined( std::vector<String> const& words ) {
    String text;
    for( String const& word : words )
        text += ( text.empty() ? "" : ", " ) + word;
    return text;
}

std::vector<String> fieldsOf( RecordKind const& listing ) {
    std::vector<String> names;
    for( Field const& field : listing.blank() )
        names.emplace_back( field.name );
    return names;
}

RecordKind const& kindMeant( String const& word ) {
    if( RecordKind const* const kind = kindOf( word ) )
        return *kind;
    std::vector<String> words;
    for( RecordKind const& kind : recordKinds() )
        words.emplace_back( kind.one );
    refuse( "no kind", words, word, "The kinds" );
}

void requireField( RecordKind const& kind, String const& word ) {
    auto const fields = fieldsOf( kind );
    if( std::find( fields.begin(), fields.end(), word ) == fields.end() )
        refuse( String( kind.one ) + " has no field", fields, word, "The fields" );
}

} // namespace Bfri
