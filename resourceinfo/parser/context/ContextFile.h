#pragma once

#include "resourceinfo/model/BfResourceParserContext.h"
#include "resourceinfo/parser/BfResourceParser.h"
#include "resourceinfo/parser/context/InputFile.h"

/// Reads one context file, plain or gzip, into the parser: the preprocessing pass, then the passes in their
/// order. The document lives for this call only. Malformed data is fatal; a file that cannot be read, or is
/// no valid JSON, fails the first look-up: "IsObject()".
void parseContextJson( BfResourceInfo::BfResourceParser* parser, String const& path,
                       BfResourceParserContext const& context );

/// The same through a given object: tests bring others.
void parseContextJson( BfResourceInfo::BfResourceParser* parser, String const& path,
                       BfResourceParserContext const& context, Context::InputFile& file );
