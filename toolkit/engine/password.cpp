#include "toolkit/engine/password.h"

#include "toolkit/engine/text.h"

namespace toolkit {

Secret utf8Password(std::string_view password)
{
    if (isUtf8(password))
        return toSecret(view(password));
    auto utf8 = utf8FromCp949(password);
    if (!utf8)
        return toSecret(view(password));
    const Secret secret = toSecret(view(*utf8));
    OPENSSL_cleanse(utf8->data(), utf8->size());
    return secret;
}

} // namespace toolkit
