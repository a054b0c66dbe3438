// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

/** @file
 *  Real servers on the loopback address, each with a port and a folder of its own, stopped on the way out.
 */
#pragma once

#include "tests/toolkit/workshop.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace toolkit_test {

class Server {
public:
    /** Serves the files of @p workshop over HTTP. */
    static Server web(const Workshop& workshop);
    /** Serves @p ldif below "c=KR". */
    static Server directory(const Workshop& workshop, const std::string& ldif);

    /** An OCSP responder (`openssl ocsp`) over the file "index" for the authority @p issuer, certificates of the workshop.
     *  @param options more of the command's options */
    static Server responder(
        const Workshop& workshop, const std::string& issuer, const std::string& signer, const std::string& options);
    /** A validation server (validator.py) that trusts the certificate @p authority, signs as @p signer, tells the lies in
     *  the file "lies" and leaves what it was asked in the file "request". */
    static Server validator(const Workshop& workshop, const std::string& authority, const std::string& signer);
    /** Answers whatever is posted with @p status and @p answer, which may be replaced in the file "answer". What is fetched
     *  is answered so too when the file "location" says where a redirection leads. */
    static Server answering(const Workshop& workshop, const std::string& answer, int status = 200);

    /** Passes what is asked over TLS with the certificate @p name on to a plain server on the loopback address, and the answer
     *  back; counts in the file "asked". */
    static Server secure(const Workshop& workshop, const std::string& name, const Server& plain);

    /** A time-stamping authority (`openssl ts`) with the settings "tsa.conf" that signs as @p signer. */
    static Server timeStamper(const Workshop& workshop, const std::string& signer);
    /** A certification authority with the certificate @p name (mock_authority.py).
     *  @param options more of its options */
    static Server authority(
        const Workshop& workshop, const std::string& name, const std::vector<std::string>& options = {});
    /** One by Bouncy Castle. @param program the command line of BouncyCastle.java
     *  @param scheme how the certificate's key signs, "SHA256withECDSA" */
    static Server bouncyStamper(
        const Workshop& workshop, const std::string& program, const std::string& signer, const std::string& scheme);
    /** One by Bouncy Castle. @param program the command line of CmpAuthority.java */
    static Server bouncyAuthority(
        const Workshop& workshop, const std::string& program, const std::string& name, const std::string& secret);
    /** Misbehaves in one of the manners of rude_server.py. */
    static Server rude(const Workshop& workshop, const std::string& manner);

    ~Server();
    Server(Server&& other) noexcept;
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    int port() const { return m_port; }

private:
    /** Starts a program in the folder and waits until its port answers, or until its output has the text @p ready. */
    Server(
        const Workshop& workshop, const std::vector<std::string>& command, int port, const std::string& ready = {});

    pid_t m_process;
    int m_port;
};

} // namespace toolkit_test
