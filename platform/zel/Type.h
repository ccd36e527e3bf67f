#pragma once

#include "vessa/Export.h"
#include "vessa/Types.h"

#include <span>
#include <string_view>
#include <vector>

namespace Zel {

using Vessa::String;
using Vessa::U32;
using Vessa::U8;

class PtrInterface;
template<class T>
class Ptr;
class TypeModule;

/// A type's place: its module and its index in it. The default identity names no type.
struct TypeId {
    TypeModule const* module = nullptr;
    U32 index = 0;

    explicit operator bool() const { return module != nullptr; }
    friend bool operator==( TypeId const&, TypeId const& ) = default;
};

enum class TypeKind : U8 { enumeration, value, entity };

/// What a module says of one type.
struct TypeInfo {
    /// Makes an entity from its arguments in string form.
    using Constructor = Ptr<PtrInterface> ( * )( std::span<String const> arguments );

    String name; ///< qualified, "BfResourceInfo::BfTableFieldId"
    TypeKind kind = TypeKind::value;
    std::vector<String> enumerators; ///< of an enumeration: the name of value 0, 1, ...
    Constructor construct = nullptr; ///< of an entity that can be made from arguments
    U32 constructArguments = 0;      ///< how many arguments that takes
};

/// The types that one part of the process registered together. Immutable after registration.
class VESSA_EXPORT TypeModule {
  public:
    TypeModule( String name, std::vector<TypeInfo> types );
    TypeModule( TypeModule const& ) = delete; // identities are its address
    TypeModule& operator=( TypeModule const& ) = delete;

    String const& name() const { return name_; }
    std::vector<TypeInfo> const& types() const { return types_; }
    /// The identity of the type at that index, which must be below types().size().
    TypeId typeId( U32 index ) const { return { this, index }; }

  private:
    String name_;
    std::vector<TypeInfo> types_;
};

/// Registers a module; the returned one lives as long as the process. Thread-safe.
VESSA_EXPORT TypeModule const& typeModuleIs( String name, std::vector<TypeInfo> types );

/// All modules in the order of their registration. Thread-safe.
VESSA_EXPORT std::vector<TypeModule const*> typeModules();

/// What the module says of a type; the identity must be a valid one.
VESSA_EXPORT TypeInfo const& typeInfo( TypeId type );

/// Makes an entity of a type from its arguments. Throws std::invalid_argument, with the type's name and what
/// was expected, for a type that has no such constructor and for another number of arguments.
VESSA_EXPORT Ptr<PtrInterface> construct( TypeId type, std::span<String const> arguments );

} // namespace Zel
