// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/net/directory.h"

#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/late_library.h"
#include "toolkit/engine/net/web.h"

#include <lber.h>
#include <ldap.h>
#include <openldap.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <unistd.h>

namespace toolkit {
namespace {

/** Entries and references that are looked at. What is wanted stands in the first entry of an honest directory. */
constexpr int maximumMessages = 64;

struct Ldap {
    LateLibrary library{SIGIL_LDAP_LIBRARY};
    SIGIL_LATE_FUNCTION(ldap_, err2string);
    SIGIL_LATE_FUNCTION(ldap_, get_dn_ber);
    SIGIL_LATE_FUNCTION(ldap_, get_option);
    SIGIL_LATE_FUNCTION(ldap_, init_fd);
    SIGIL_LATE_FUNCTION(ldap_, msgfree);
    SIGIL_LATE_FUNCTION(ldap_, msgtype);
    SIGIL_LATE_FUNCTION(ldap_, parse_result);
    SIGIL_LATE_FUNCTION(ldap_, result);
    SIGIL_LATE_FUNCTION(ldap_, sasl_bind);
    SIGIL_LATE_FUNCTION(ldap_, search_ext);
    SIGIL_LATE_FUNCTION(ldap_, set_option);
    SIGIL_LATE_FUNCTION(ldap_, unbind_ext_s);
    // of a library that it brings along:
    SIGIL_LATE_FUNCTION(, ber_first_element);
    SIGIL_LATE_FUNCTION(, ber_free);
    SIGIL_LATE_FUNCTION(, ber_next_element);
    SIGIL_LATE_FUNCTION(, ber_peek_tag);
    SIGIL_LATE_FUNCTION(, ber_scanf);
    SIGIL_LATE_FUNCTION(, ber_skip_element);
    SIGIL_LATE_FUNCTION(, ber_sockbuf_ctrl);
};

const Ldap& ldap()
{
    static const Ldap loaded;
    return loaded;
}

struct CloseSession {
    void operator()(LDAP* session) const { ldap().unbind_ext_s(session, nullptr, nullptr); }
};
struct FreeLdapMessage {
    void operator()(LDAPMessage* message) const { ldap().msgfree(message); }
};
struct FreeElement {
    void operator()(BerElement* element) const { ldap().ber_free(element, 0); }
};
using Session = std::unique_ptr<LDAP, CloseSession>;
using LdapMessage = std::unique_ptr<LDAPMessage, FreeLdapMessage>;
using Element = std::unique_ptr<BerElement, FreeElement>;

void ensure(int result)
{
    const bool missing =
        result == LDAP_NO_SUCH_OBJECT || result == LDAP_NO_SUCH_ATTRIBUTE || result == LDAP_INVALID_DN_SYNTAX;
    require(result != LDAP_NO_MEMORY, SIGIL_TK_NO_MEMORY);
    require(result == LDAP_SUCCESS, missing ? SIGIL_TK_NOT_FOUND : SIGIL_TK_FETCH, ldap().err2string(result));
}

/** One message is held as a whole, so its length field must not decide how much memory that takes. */
void boundMessages(LDAP* session)
{
    Sockbuf* buffer = nullptr;
    ber_len_t largest = maximumFetchSize;
    const bool bounded = ldap().get_option(session, LDAP_OPT_SOCKBUF, &buffer) == LDAP_OPT_SUCCESS &&
        ldap().ber_sockbuf_ctrl(buffer, LBER_SB_OPT_SET_MAX_INCOMING, &largest) == 1;
    require(bounded, SIGIL_TK_INTERNAL, "directory");
}

/** Over a connection that never blocks: a server that falls silent within a message would hold any other one. */
Session openSession(const std::string& server, const Visits& visits)
{
    const int connection = connectTo(server, visits);
    LDAP* opened = nullptr;
    const int result = ldap().init_fd(connection, LDAP_PROTO_TCP, ("ldap://" + server).c_str(), &opened);
    if (result != LDAP_SUCCESS)
        close(connection);
    ensure(result);
    Session session(opened);
    const int version = LDAP_VERSION3;
    ldap().set_option(opened, LDAP_OPT_PROTOCOL_VERSION, &version);
    ldap().set_option(opened, LDAP_OPT_REFERRALS, LDAP_OPT_OFF);
    boundMessages(opened);
    return session;
}

/** The next message of an operation. They are taken one by one, so that no server can pile them up. */
LdapMessage receive(LDAP* session, int operation, const Visits& visits)
{
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(visits.remaining()).count();
    timeval patience{left / 1000000, left % 1000000};
    LDAPMessage* received = nullptr;
    const int type = ldap().result(session, operation, LDAP_MSG_ONE, &patience, &received);
    LdapMessage message(received);
    require(type != 0, SIGIL_TK_FETCH, "the time is over");
    require(type > 0, SIGIL_TK_FETCH, "the connection broke");
    return message;
}

/** The result that the last message of an operation holds. */
int resultIn(LDAP* session, LDAPMessage* message)
{
    int result = LDAP_OTHER;
    const int parsed = ldap().parse_result(session, message, &result, nullptr, nullptr, nullptr, nullptr, 0);
    return parsed == LDAP_SUCCESS ? result : parsed;
}

int tryBind(LDAP* session, const Visits& visits)
{
    berval nobody{0, nullptr};
    int operation = 0;
    ensure(ldap().sasl_bind(session, nullptr, LDAP_SASL_SIMPLE, &nobody, nullptr, nullptr, &operation));
    const LdapMessage answer = receive(session, operation, visits);
    require(ldap().msgtype(answer.get()) == LDAP_RES_BIND, SIGIL_TK_FETCH, "answer of another kind");
    return resultIn(session, answer.get());
}

/** Anonymous. Servers of the previous protocol version insist on being told who calls. */
void bind(LDAP* session, const Visits& visits)
{
    int result = tryBind(session, visits);
    if (result == LDAP_PROTOCOL_ERROR) {
        const int version = LDAP_VERSION2;
        ldap().set_option(session, LDAP_OPT_PROTOCOL_VERSION, &version);
        result = tryBind(session, visits);
    }
    ensure(result);
}

int startSearch(LDAP* session, const DirectoryQuery& query)
{
    std::vector<std::string> names = query.attributes;
    std::vector<char*> attributes;
    std::transform(
        names.begin(), names.end(), std::back_inserter(attributes), [](std::string& name) { return name.data(); });
    attributes.push_back(nullptr);
    const bool base = query.filter.empty();
    timeval limit{Visits::maximumTime.count(), 0};
    int operation = 0;
    ensure(ldap().search_ext(session, query.base.c_str(), base ? LDAP_SCOPE_BASE : LDAP_SCOPE_SUBTREE,
        base ? "(objectClass=*)" : query.filter.c_str(), attributes.data(), 0, nullptr, nullptr, &limit,
        maximumMessages, &operation));
    return operation;
}

struct Attribute {
    std::string_view name;
    View value; ///< the first one that is not empty
};

/** The first value of a set that is not empty, where it was received: an entry may hold millions of them. */
View firstValue(BerElement* set)
{
    ber_len_t length = 0;
    char* end = nullptr;
    berval value{};
    View first;
    for (ber_tag_t tag = ldap().ber_first_element(set, &length, &end); tag != LBER_DEFAULT;
         tag = ldap().ber_next_element(set, &length, end)) {
        require(ldap().ber_skip_element(set, &value) == LBER_OCTETSTRING, SIGIL_TK_FETCH, "entry");
        if (first.empty())
            first = view(std::string_view(value.bv_val, value.bv_len));
    }
    return first;
}

/** The next attribute of an entry; nothing after the last one. */
std::optional<Attribute> nextAttribute(BerElement* entry)
{
    ber_len_t length = 0;
    berval name{};
    if (ldap().ber_peek_tag(entry, &length) != LBER_SEQUENCE)
        return {};
    require(ldap().ber_scanf(entry, "{m", &name) != LBER_ERROR, SIGIL_TK_FETCH, "entry");
    return Attribute{{name.bv_val, name.bv_len}, firstValue(entry)};
}

/** Reads the attributes of an entry. */
Element attributesOf(LDAP* session, LDAPMessage* entry)
{
    BerElement* element = nullptr;
    berval name{};
    ensure(ldap().get_dn_ber(session, entry, &element, &name));
    return Element(element);
}

bool sameAttribute(std::string_view left, std::string_view right)
{
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; };
    return std::equal(
        left.begin(), left.end(), right.begin(), right.end(), [&](char a, char b) { return lower(a) == lower(b); });
}

/** Place among the wanted ones; their number when it is none of them. */
std::size_t rank(const std::vector<std::string>& wanted, std::string_view name)
{
    const auto found = std::find_if(
        wanted.begin(), wanted.end(), [&](const std::string& attribute) { return sameAttribute(attribute, name); });
    return static_cast<std::size_t>(found - wanted.begin());
}

/** The dearest attribute that an entry has; empty without one. */
View valueIn(LDAP* session, LDAPMessage* entry, const std::vector<std::string>& wanted)
{
    View value;
    std::size_t best = wanted.size();
    const Element attributes = attributesOf(session, entry);
    while (const auto attribute = nextAttribute(attributes.get())) {
        const std::size_t place = rank(wanted, attribute->name);
        if (place >= best || attribute->value.empty())
            continue;
        best = place;
        value = attribute->value;
    }
    return value;
}

} // namespace

Bytes queryDirectory(const DirectoryQuery& query, const Visits& visits)
{
    const Session session = openSession(query.server, visits);
    bind(session.get(), visits);
    const int operation = startSearch(session.get(), query);
    for (int i = 0; i < maximumMessages; ++i) {
        const LdapMessage message = receive(session.get(), operation, visits);
        const int type = ldap().msgtype(message.get());
        if (type == LDAP_RES_SEARCH_RESULT) {
            ensure(resultIn(session.get(), message.get()));
            fail(SIGIL_TK_NOT_FOUND);
        }
        const View value =
            type == LDAP_RES_SEARCH_ENTRY ? valueIn(session.get(), message.get(), query.attributes) : View();
        if (!value.empty())
            return toBytes(value);
    }
    fail(SIGIL_TK_FETCH, "too many entries");
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
