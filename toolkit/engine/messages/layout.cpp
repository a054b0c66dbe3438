// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "toolkit/engine/messages/layout.h"

#include "toolkit/engine/base/der.h"
#include "toolkit/engine/base/error.h"
#include "toolkit/engine/base/oid.h"

#include <array>
#include <set>
#include <string_view>

namespace toolkit {
namespace {

/** Bounds for everything but the content: certificates, recipients, signers. */
constexpr std::uint64_t maximumFields = 8UL * 1024 * 1024;
/** How deep elements of indefinite length, and pieces of a string, may stand in each other. */
constexpr int maximumDepth = 16;

[[noreturn]] void failMalformed(std::string_view detail) { fail(SIGIL_TK_CMS_MALFORMED, detail); }

struct Head {
    unsigned char tag;
    bool indefinite;
    std::uint64_t length; ///< of the content, when it is definite
};

/** What is left of a constructed element. */
struct Rest {
    std::uint64_t end; ///< nothing of it lies behind this
    bool indefinite;   ///< it ends with an end-of-contents marker before that
};

/** Walks over BER elements without keeping them. */
class Walker {
public:
    explicit Walker(const Input& input, std::uint64_t at = 0)
        : m_input(input)
        , m_at(at)
    {
    }

    std::uint64_t at() const { return m_at; }
    Rest whole() const { return {m_input.size(), false}; }

    /** Whether another element follows; steps over the marker behind the last one. */
    bool more(const Rest& rest)
    {
        if (!rest.indefinite)
            return m_at < rest.end;
        std::array<unsigned char, 2> marker{};
        read(rest, marker);
        if (marker[0] != 0 || marker[1] != 0)
            return true;
        m_at += marker.size();
        return false;
    }

    /** The tag of the next element. */
    unsigned char peek(const Rest& rest) const
    {
        std::array<unsigned char, 1> tag{};
        read(rest, tag);
        return tag[0];
    }

    Head head(const Rest& rest)
    {
        std::array<unsigned char, 2> start{};
        read(rest, start);
        m_at += start.size();
        if ((start[0] & 0x1F) == 0x1F || start[0] == 0)
            failMalformed("tag");
        Head head{start[0], start[1] == 0x80, start[1]};
        if (head.indefinite && (head.tag & 0x20) == 0)
            failMalformed("length");
        if (start[1] > 0x80)
            head.length = longLength(rest, start[1] & 0x7F);
        if (!head.indefinite && head.length > rest.end - m_at)
            failMalformed("length");
        return head;
    }

    Rest inside(const Rest& rest, const Head& head) const
    {
        return head.indefinite ? Rest{rest.end, true} : Rest{m_at + head.length, false};
    }

    Rest enter(const Rest& rest, unsigned char tag)
    {
        const Head found = head(rest);
        if (found.tag != tag)
            failMalformed("unexpected field");
        return inside(rest, found);
    }

    /** Steps over one element. */
    void skip(const Rest& rest, int depth = 0)
    {
        const Head found = head(rest);
        if (!found.indefinite) {
            m_at += found.length;
            return;
        }
        if (depth == maximumDepth)
            failMalformed("nesting");
        const Rest content = inside(rest, found);
        while (more(content))
            skip(content, depth + 1);
    }

    /** Appends one element as it stands. */
    void copy(const Rest& rest, Bytes& out)
    {
        const std::uint64_t begin = m_at;
        skip(rest);
        const std::uint64_t length = m_at - begin;
        if (length > maximumFields - out.size())
            failMalformed("too large");
        out.resize(out.size() + static_cast<std::size_t>(length));
        m_input.read(begin, std::span(out).last(static_cast<std::size_t>(length)));
    }

    void finish(const Rest& rest)
    {
        if (more(rest))
            failMalformed("unexpected field");
    }

    /** Steps over a string of one piece or several and hands out its octets when somebody takes them. */
    void octets(const Rest& rest, const Sink& take, int depth = 0)
    {
        const Head found = head(rest);
        if ((found.tag & 0x20) == 0) {
            if (take)
                m_input.pieces(m_at, found.length, take);
            m_at += found.length;
            return;
        }
        if (depth == maximumDepth)
            failMalformed("nesting");
        const Rest content = inside(rest, found);
        while (more(content)) {
            if ((peek(content) & ~0x20) != der::OctetString)
                failMalformed("piece of a string");
            octets(content, take, depth + 1);
        }
    }

private:
    void read(const Rest& rest, std::span<unsigned char> room) const
    {
        if (m_at + room.size() > rest.end)
            failMalformed("truncated");
        m_input.read(m_at, room);
    }

    std::uint64_t longLength(const Rest& rest, std::size_t octets)
    {
        std::array<unsigned char, 8> bytes{};
        if (octets > bytes.size())
            failMalformed("length");
        read(rest, std::span(bytes).first(octets));
        m_at += octets;
        std::uint64_t length = 0;
        for (const unsigned char byte : std::span(bytes).first(octets))
            length = length << 8 | byte;
        return length;
    }

    const Input& m_input;
    std::uint64_t m_at;
};

std::string takeOid(Walker& walker, const Rest& rest, Bytes* copy = nullptr)
{
    Bytes bytes;
    walker.copy(rest, bytes);
    const auto content = der::Reader(bytes).take(der::Oid);
    std::string text = content ? der::oidText(*content) : std::string();
    if (text.empty())
        failMalformed("type");
    if (copy)
        copy->insert(copy->end(), bytes.begin(), bytes.end());
    return text;
}

/** Copies the hashes that a message names, each of them once. Readers hash the content for every one that stands there, one inside
 *  the other, and a message may name the same hash by the hundred thousand. */
void copyHashes(Walker& walker, const Rest& fields, Bytes& out)
{
    const std::uint64_t begin = walker.at();
    const Rest hashes = walker.enter(fields, der::Set);
    std::set<std::string> known;
    Bytes content;
    while (walker.more(hashes)) {
        Bytes algorithm;
        walker.copy(hashes, algorithm);
        const Input bytes{View(algorithm)};
        Walker inside(bytes);
        if (known.insert(takeOid(inside, inside.enter(inside.whole(), der::Sequence))).second)
            content.insert(content.end(), algorithm.begin(), algorithm.end());
        if (walker.at() - begin > maximumFields)
            failMalformed("too large");
    }
    const Bytes set = der::element(der::Set, {content});
    out.insert(out.end(), set.begin(), set.end());
}

bool isMessageType(std::string_view type)
{
    return type == oid::signedData || type == oid::envelopedData || type == oid::signedAndEnvelopedData ||
        type == oid::encryptedData;
}

/** Signed content is an OCTET STRING in an explicit tag, encrypted content an implicitly tagged one. */
bool isWrapped(std::string_view type) { return type == oid::signedData; }

/** Where the content's string begins; nothing when there is none. */
std::optional<std::uint64_t> locateContent(Walker& walker, const Rest& holder, std::string_view type)
{
    if (!walker.more(holder))
        return {};
    const unsigned char tag = walker.peek(holder);
    if (!isWrapped(type) && tag != der::Implicit0OctetString && tag != der::Implicit0)
        failMalformed("content");
    const Rest string = isWrapped(type) ? walker.enter(holder, der::Explicit0) : holder;
    const std::uint64_t place = walker.at();
    if (isWrapped(type) && (walker.peek(string) & ~0x20) != der::OctetString)
        failMalformed("content");
    walker.octets(string, {});
    if (isWrapped(type))
        walker.finish(string);
    walker.finish(holder);
    return place;
}

} // namespace

Bytes MessageLayout::skeleton() const
{
    const Bytes holding = der::element(der::Sequence, {holder});
    const Bytes fields = der::element(der::Sequence, {before, holding, after});
    return der::element(der::Sequence, {der::oid(type.c_str()), der::element(der::Explicit0, {fields})});
}

Bytes MessageLayout::prefix(std::uint64_t size) const
{
    Bytes out;
    std::uint64_t length = size; // of everything from the front of `out` to the end of the message
    const auto prepend = [&](View bytes) {
        out.insert(out.begin(), bytes.begin(), bytes.end());
        length += bytes.size();
    };
    if (isWrapped(type)) {
        prepend(der::header(der::OctetString, length));
        prepend(der::header(der::Explicit0, length));
    } else {
        prepend(der::header(der::Implicit0OctetString, length));
    }
    prepend(holder);
    prepend(der::header(der::Sequence, length));
    prepend(before);
    length += after.size();
    prepend(der::header(der::Sequence, length));
    prepend(der::header(der::Explicit0, length));
    prepend(der::oid(type.c_str()));
    prepend(der::header(der::Sequence, length));
    return out;
}

Message::Message(Input input)
    : m_input(std::move(input))
{
    Walker walker(m_input);
    const Rest file = walker.whole();
    const Rest info = walker.enter(file, der::Sequence);
    m_layout.type = takeOid(walker, info);
    toolkit::require(isMessageType(m_layout.type), SIGIL_TK_CMS_TYPE, m_layout.type);
    const Rest wrapper = walker.enter(info, der::Explicit0);
    const Rest fields = walker.enter(wrapper, der::Sequence);
    while (walker.peek(fields) != der::Sequence)
        if (isWrapped(m_layout.type) && walker.peek(fields) == der::Set)
            copyHashes(walker, fields, m_layout.before);
        else
            walker.copy(fields, m_layout.before);
    const Rest holder = walker.enter(fields, der::Sequence);
    m_layout.holds = takeOid(walker, holder, &m_layout.holder);
    if (!isWrapped(m_layout.type))
        walker.copy(holder, m_layout.holder); // the cipher
    m_content = locateContent(walker, holder, m_layout.type);
    while (walker.more(fields))
        walker.copy(fields, m_layout.after);
    walker.finish(wrapper);
    walker.finish(info);
    if (walker.more(file))
        failMalformed("bytes behind the message");
}

const Message& Message::require(const char* type) const
{
    toolkit::require(m_layout.type == type, SIGIL_TK_CMS_TYPE, m_layout.type);
    return *this;
}

void Message::content(const Sink& take) const
{
    toolkit::require(hasContent(), SIGIL_TK_CMS_CONTENT, "no content");
    Walker walker(m_input, *m_content);
    walker.octets(walker.whole(), take);
}

MessageLayout layoutOf(View der) { return Message(Input(der)).layout(); }

} // namespace toolkit
