#include "toolkit/engine/net/directory.h"

#include "toolkit/engine/base/error.h"

#include <ldap.h>

#include <algorithm>
#include <memory>

namespace toolkit {
namespace {

constexpr timeval patience{10, 0};

struct CloseSession {
    void operator()(LDAP* session) const { ldap_unbind_ext_s(session, nullptr, nullptr); }
};
struct FreeMessage {
    void operator()(LDAPMessage* message) const { ldap_msgfree(message); }
};
struct FreeValues {
    void operator()(berval** values) const { ldap_value_free_len(values); }
};
using Session = std::unique_ptr<LDAP, CloseSession>;
using Message = std::unique_ptr<LDAPMessage, FreeMessage>;
using Values = std::unique_ptr<berval*, FreeValues>;

void ensure(int result)
{
    const bool missing =
        result == LDAP_NO_SUCH_OBJECT || result == LDAP_NO_SUCH_ATTRIBUTE || result == LDAP_INVALID_DN_SYNTAX;
    require(result == LDAP_SUCCESS, missing ? SIGIL_TK_NOT_FOUND : SIGIL_TK_FETCH, ldap_err2string(result));
}

Session openSession(const std::string& server)
{
    LDAP* opened = nullptr;
    ensure(ldap_initialize(&opened, server.c_str()));
    Session session(opened);
    const int version = LDAP_VERSION3;
    ldap_set_option(opened, LDAP_OPT_PROTOCOL_VERSION, &version);
    ldap_set_option(opened, LDAP_OPT_NETWORK_TIMEOUT, &patience);
    ldap_set_option(opened, LDAP_OPT_TIMEOUT, &patience);
    ldap_set_option(opened, LDAP_OPT_REFERRALS, LDAP_OPT_OFF);
    return session;
}

/** Anonymous. Servers of the previous protocol version insist on being told who calls. */
void bind(LDAP* session)
{
    berval nobody{0, nullptr};
    int result = ldap_sasl_bind_s(session, nullptr, LDAP_SASL_SIMPLE, &nobody, nullptr, nullptr, nullptr);
    if (result == LDAP_PROTOCOL_ERROR) {
        const int version = LDAP_VERSION2;
        ldap_set_option(session, LDAP_OPT_PROTOCOL_VERSION, &version);
        result = ldap_sasl_bind_s(session, nullptr, LDAP_SASL_SIMPLE, &nobody, nullptr, nullptr, nullptr);
    }
    ensure(result);
}

Message search(LDAP* session, const DirectoryQuery& query)
{
    std::vector<std::string> names = query.attributes;
    std::vector<char*> attributes;
    std::transform(
        names.begin(), names.end(), std::back_inserter(attributes), [](std::string& name) { return name.data(); });
    attributes.push_back(nullptr);
    const bool base = query.filter.empty();
    timeval limit = patience;
    LDAPMessage* found = nullptr;
    const int result = ldap_search_ext_s(session, query.base.c_str(), base ? LDAP_SCOPE_BASE : LDAP_SCOPE_SUBTREE,
        base ? "(objectClass=*)" : query.filter.c_str(), attributes.data(), 0, nullptr, nullptr, &limit, 0, &found);
    Message message(found);
    ensure(result);
    return message;
}

} // namespace

Bytes queryDirectory(const DirectoryQuery& query)
{
    const Session session = openSession(query.server);
    bind(session.get());
    const Message found = search(session.get(), query);
    for (LDAPMessage* entry = ldap_first_entry(session.get(), found.get()); entry;
         entry = ldap_next_entry(session.get(), entry)) {
        for (const std::string& attribute : query.attributes) {
            const Values values(ldap_get_values_len(session.get(), entry, attribute.c_str()));
            const berval* const first = values ? values.get()[0] : nullptr;
            if (first && first->bv_len > 0)
                return toBytes(view({first->bv_val, first->bv_len}));
        }
    }
    fail(SIGIL_TK_NOT_FOUND);
}

std::string escapedFilterValue(const std::string& text)
{
    std::string escaped;
    for (const char c : text) {
        if (c == '*' || c == '(' || c == ')' || c == '\\') {
            constexpr const char* digits = "0123456789abcdef";
            escaped += '\\';
            escaped += digits[static_cast<unsigned char>(c) >> 4];
            escaped += digits[static_cast<unsigned char>(c) & 15];
        } else {
            escaped += c;
        }
    }
    return escaped;
}

} // namespace toolkit
