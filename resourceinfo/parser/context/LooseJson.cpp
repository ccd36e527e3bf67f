#include "resourceinfo/parser/context/LooseJson.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace Context {

String LooseJson::literal() const {
    if( !value_ || value_->IsObject() || value_->IsArray() )
        return "";
    if( value_->IsString() )
        return '"' + text() + '"';
    rapidjson::GenericStringBuffer<rapidjson::UTF8<>, JsonAllocator> buffer;
    rapidjson::Writer<decltype( buffer ), rapidjson::UTF8<>, rapidjson::UTF8<>, JsonAllocator> writer(
        buffer );
    value_->Accept( writer );
    return buffer.GetString();
}

} // namespace Context
