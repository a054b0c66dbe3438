// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tools/sample-store/plan.h"

#include "tools/sample-store/dates.h"
#include "tools/sample-store/names.h"

#include <iterator>
#include <set>

namespace sample {

namespace {

// What certificate i is like is entry i of each of these, taken round and round. Their lengths have no common factor,
// so every combination turns up in a large store, and the first ten already show each entry.
constexpr State states[] = {State::Valid, State::Valid, State::Expiring, State::Expired, State::Valid, State::Valid,
    State::Valid, State::Expiring, State::Valid, State::Expired, State::Valid};
constexpr int keyLengths[] = {2048, 2048, 2048, 1024, 2048};
constexpr char variants[] = {'A', 'A', 'C', 'A', 'B', 'A', 'D', 'A', 'A', 'E', 'A', 'A', 'C'};
constexpr Pairs keyPairs[] = {Pairs::Both, Pairs::Both, Pairs::Both, Pairs::Both, Pairs::SigningOnly, Pairs::Both,
    Pairs::Both, Pairs::Both, Pairs::Both};

template <class T, std::size_t N>
T entry(const T (&table)[N], int i, const std::optional<T>& wish)
{
    return wish.value_or(table[static_cast<std::size_t>(i) % N]);
}

struct Placeholders {
    std::string name;
    std::string latin;
};

std::string fillSubject(std::string_view form, const Placeholders& values, Random& random)
{
    std::string subject(form);
    for (std::size_t open; (open = subject.find('{')) != subject.npos;) {
        const std::size_t length = subject.find('}', open) - open + 1;
        const std::string what = subject.substr(open + 1, length - 2);
        subject.replace(open, length,
            what == "name"        ? values.name
                : what == "latin" ? values.latin
                                  : inventDigits(random, static_cast<int>(what.size())));
    }
    return subject;
}

/** Fills in who the certificate belongs to. */
void inventHolder(PlannedCertificate& planned, Random& random)
{
    Placeholders values;
    switch (planned.kind->holder) {
    case Holder::Person: {
        const Person person = inventPerson(random);
        values = {person.name, person.latin};
        planned.identityNumber = inventResidentNumber(random);
        break;
    }
    case Holder::Company:
        values = {inventCompany(random), {}};
        planned.identityNumber = inventBusinessNumber(random);
        break;
    case Holder::Server:
        planned.identityNumber.clear();
        break;
    }
    planned.realName = values.name;
    planned.subject = DistinguishedName(fillSubject(planned.kind->subject, values, random));
}

/** Gives the certificate a holder that no other certificate of the same folder has; when the invented names run out,
 *  a branch number tells them apart. */
void inventUniqueHolder(PlannedCertificate& planned, Random& random, std::set<std::string>& taken)
{
    const auto pathOf = [&](const std::string& name) {
        std::string path(planned.kind->folder);
        return path.append("/").append(name);
    };
    constexpr int attempts = 20;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        inventHolder(planned, random);
        if (taken.insert(pathOf(planned.subject.text())).second)
            return;
    }
    const std::string subject = planned.subject.text();
    std::string numbered;
    for (int branch = 2; numbered.empty() || !taken.insert(pathOf(numbered)).second; ++branch)
        numbered = std::string(subject).insert(subject.find(','), " " + std::to_string(branch));
    planned.subject = DistinguishedName(numbered);
}

/** Government authorities use 20 random bytes; the others 4 bytes, counted on. */
toolkit::Bytes inventSerial(Family family, std::uint32_t number, Random& random)
{
    toolkit::Bytes serial;
    if (family == Family::Gpki)
        for (int i = 0; i < 16; ++i)
            serial.push_back(static_cast<unsigned char>(random.between(1, 127)));
    for (int shift = 24; shift >= 0; shift -= 8)
        serial.push_back(static_cast<unsigned char>(number >> shift));
    return serial;
}

void planValidity(PlannedCertificate& planned, std::time_t today, Random& random)
{
    const int governmentDays = 27 * 30;
    const int days = planned.kind->family == Family::Gpki ? governmentDays : 365;
    const int left = planned.state == State::Valid ? random.between(150, 340)
        : planned.state == State::Expiring         ? random.between(3, 25)
                                                   : random.between(-300, -2);
    // yessign's certificates run from midnight to midnight in Korea, the others from any second.
    const bool korean = planned.subject.text().find("o=yessign") != std::string::npos;
    const std::time_t second = korean ? 15L * 60 * 60 : static_cast<std::time_t>(random.below(oneDay));
    planned.notAfter = today + left * oneDay + second - (korean ? 1 : 0);
    planned.notBefore = today + (left - days) * oneDay + second;
}

} // namespace

std::vector<PlannedCertificate> planStore(const Options& options)
{
    Random random(options.seed);
    const auto firstSerial = static_cast<std::uint32_t>(random.between(0x100000, 0x3fffffff)) * 2;
    std::set<std::string> taken;
    std::vector<PlannedCertificate> plan;
    const int families = static_cast<int>(options.families.size());
    for (int i = 0; i < options.count; ++i) {
        const std::span<const Kind> kinds = kindsOf(options.families[static_cast<std::size_t>(i % families)]);
        const Kind& kind = kinds[static_cast<std::size_t>(i / families) % kinds.size()];
        PlannedCertificate planned{&kind, DistinguishedName({}), {}, {}, {}, entry(states, i, options.state), 0, 0,
            entry(keyLengths, i, options.keyBits), entry(variants, i, options.variant),
            entry(keyPairs, i, options.pairs)};
        inventUniqueHolder(planned, random, taken);
        planned.serial = inventSerial(kind.family, firstSerial + 2 * static_cast<std::uint32_t>(i), random);
        planValidity(planned, options.now, random);
        plan.push_back(std::move(planned));
    }
    return plan;
}

} // namespace sample
