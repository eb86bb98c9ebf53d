#include "tests/platform/linux/support/MessageText.h"

#include <cstdint>

namespace vorlane::platform {

namespace {

template <typename Value>
Value read(sd_bus_message* message, char type)
{
    Value value{};
    (void)sd_bus_message_read_basic(message, type, &value);
    return value;
}

std::string textOfBytes(sd_bus_message* message)
{
    const void* bytes = nullptr;
    std::size_t size = 0;
    (void)sd_bus_message_read_array(message, SD_BUS_TYPE_BYTE, &bytes, &size);
    return std::to_string(size) + " bytes";
}

std::string textOfNext(sd_bus_message* message);

std::string textOfAll(sd_bus_message* message, const char* separator)
{
    std::string text;
    while (sd_bus_message_at_end(message, 0) == 0) {
        if (!text.empty()) text += separator;
        text += textOfNext(message);
    }
    return text;
}

std::string textOfContainer(sd_bus_message* message, char type, const std::string& contents)
{
    (void)sd_bus_message_enter_container(message, type, contents.c_str());
    auto inside = textOfAll(message, type == SD_BUS_TYPE_DICT_ENTRY ? ": " : ", ");
    (void)sd_bus_message_exit_container(message);
    if (type == SD_BUS_TYPE_VARIANT) return "<" + inside + ">";
    if (type == SD_BUS_TYPE_STRUCT) return "(" + inside + ")";
    if (type == SD_BUS_TYPE_DICT_ENTRY) return inside;
    return contents.starts_with('{') ? "{" + inside + "}" : "[" + inside + "]";
}

std::string textOfNext(sd_bus_message* message)
{
    char type = 0;
    const char* contents = nullptr;
    if (sd_bus_message_peek_type(message, &type, &contents) <= 0) return "?";
    switch (type) {
        case SD_BUS_TYPE_BOOLEAN:
            return read<int>(message, type) ? "true" : "false";
        case SD_BUS_TYPE_INT32:
            return std::to_string(read<std::int32_t>(message, type));
        case SD_BUS_TYPE_UINT32:
            return std::to_string(read<std::uint32_t>(message, type)) + "u";
        case SD_BUS_TYPE_OBJECT_PATH:
            return "object '" + std::string(read<const char*>(message, type)) + "'";
        case SD_BUS_TYPE_STRING:
            return "'" + std::string(read<const char*>(message, type)) + "'";
        case SD_BUS_TYPE_ARRAY:
            if (std::string_view(contents) == "y") return textOfBytes(message);
            return textOfContainer(message, type, contents);
        case SD_BUS_TYPE_VARIANT:
        case SD_BUS_TYPE_STRUCT:
        case SD_BUS_TYPE_DICT_ENTRY:
            return textOfContainer(message, type, contents);
        default:
            (void)sd_bus_message_skip(message, nullptr);
            return std::string("a ") + type;
    }
}

}  // namespace

std::string messageText(sd_bus_message* message)
{
    if (!message) return "nothing";
    if (const auto* const error = sd_bus_message_get_error(message)) return error->name;
    (void)sd_bus_message_rewind(message, 1);
    return "(" + textOfAll(message, ", ") + ")";
}

}  // namespace vorlane::platform
