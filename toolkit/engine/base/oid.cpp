#include "toolkit/engine/base/oid.h"

#include "toolkit/engine/base/error.h"

#include <openssl/objects.h>

#include <vector>

namespace toolkit {

std::string dottedOid(const ASN1_OBJECT* object)
{
    const int length = OBJ_obj2txt(nullptr, 0, object, 1);
    if (length <= 0) {
        requireMemory();
        return {};
    }
    std::vector<char> text(static_cast<std::size_t>(length) + 1);
    OBJ_obj2txt(text.data(), length + 1, object, 1);
    return text.data();
}

} // namespace toolkit
