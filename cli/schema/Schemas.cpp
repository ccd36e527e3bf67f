#include "cli/schema/Schemas.h"

#include "cli/grammar/Commands.h"
#include "cli/schema/AnswerSchemas.h"

namespace Bfri {

bool hasSchema( Command const& command ) { return command.schema || command.listing; }

Row schemaOf( Command const& command ) {
    List answers{ command.schema ? command.schema() : Schema::listOf( *command.listing ), Schema::failure() };
    return { { "$schema", "https://json-schema.org/draft/2020-12/schema" },
             { "$id", String( "urn:bfri:format-1:" ) + command.word },
             { "title", String( "bfri " ) + command.word + ( command.json ? " --json" : "" ) },
             { "anyOf", std::move( answers ) } };
}

} // namespace Bfri
