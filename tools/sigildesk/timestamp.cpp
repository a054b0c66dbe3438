// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// timestamp: a token of a time-stamping authority (RFC 3161).
#include "stamps.h"

#include "commands.h"
#include "files.h"
#include "signing.h"

#include <nlohmann/json.hpp>

#include <array>

namespace host {

namespace {

constexpr Words waiting{"Waiting for the time-stamping authority ...", "시점확인 기관의 응답을 기다립니다 ..."};
constexpr Words noAddress{"--url names the authority", "--url로 시점확인 기관의 주소를 지정하십시오"};

std::string tokenFor(const Session& session, const Crypto& crypto, const std::string& file)
{
    const Progress progress(session.output, waiting);
    return stampToken(crypto, session.arguments.text("--url"), readContent(file));
}

} // namespace

Stamp stampOf(const Crypto& crypto, Bytes& token)
{
    constexpr int capacity = 2048;
    using Text = std::array<char, capacity + 1>;
    std::array<Text, 8> texts{};
    Bytes authority(crypto.handle());
    crypto.check(
        TSPGetTokenInfo(crypto.handle(), token.get(), capacity, texts[0].data(), texts[1].data(), texts[2].data(),
            texts[3].data(), texts[4].data(), texts[5].data(), texts[6].data(), texts[7].data(), authority.get()));
    return {isoTime(timeOf(texts[6].data())), dotted(texts[2].data()), texts[5].data()};
}

int runTimestamp(Session& session)
{
    const std::string file = session.arguments.text("FILE");
    if (!session.arguments.has("--url"))
        throw Failure(wrongUse, "wrong_use", noAddress);
    mustExist(file);
    WrittenFile target(session, outputPath(session, file + ".tst"));
    const Crypto crypto(session);
    const std::string token = tokenFor(session, crypto, file);
    Bytes bytes(crypto.handle());
    set(crypto, bytes, token);
    const Stamp stamp = stampOf(crypto, bytes);
    target.write(token);
    target.commit();
    session.output.document(
        {{"file", target.path()}, {"time", stamp.time}, {"policy", stamp.policy}, {"serial", stamp.serial}});
    session.output.line(target.path() + "  " + stamp.time);
    return done;
}

} // namespace host
