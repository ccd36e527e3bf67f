#pragma once

// The two type modules of the library and the places of its types in them. Both are registered when the
// library is loaded, the interface's first.

#include "zel/Type.h"

namespace BfResourceInfo {

/// Types of the interface's module, by index.
enum InterfaceType : Zel::U32 {
    bfResourceFieldIdType,
    bfTableFieldIdType,
    bfTableStringIdType,
    bfCounterFieldIdType,
    bfMeterFieldIdType,
    bfWredFieldIdType,
    bfResourceInfoIntfType,
};

/// Types of the parser's module, by index.
enum ParserType : Zel::U32 {
    bfZelResourceType,
    bfPipeMaskType,
    bfHeaderInfoType,
    bfResourceParserType,
};

Zel::TypeModule const& interfaceTypeModule();
Zel::TypeModule const& parserTypeModule();

} // namespace BfResourceInfo
