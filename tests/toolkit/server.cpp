// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

#include "tests/toolkit/server.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <thread>
#include <utility>

namespace toolkit_test {
namespace {

sockaddr_in loopback(int port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    return address;
}

/** A port that nobody used a moment ago. */
int freePort()
{
    const int probe = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = loopback(0);
    socklen_t length = sizeof(address);
    bind(probe, reinterpret_cast<sockaddr*>(&address), sizeof(address));
    getsockname(probe, reinterpret_cast<sockaddr*>(&address), &length);
    close(probe);
    return ntohs(address.sin_port);
}

bool answers(int port)
{
    const int probe = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = loopback(port);
    const bool connected = connect(probe, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    close(probe);
    return connected;
}

void becomeProgram(const std::string& folder, const std::vector<std::string>& command)
{
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    const int log = open((folder + "/server.log").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(log, STDOUT_FILENO);
    dup2(log, STDERR_FILENO);
    if (chdir(folder.c_str()) == 0)
        execvp(arguments[0], arguments.data());
    _exit(127);
}

pid_t start(const Workshop& workshop, const std::vector<std::string>& command)
{
    std::filesystem::remove(workshop.path("server.log"));
    const pid_t process = fork();
    if (process == 0)
        becomeProgram(workshop.path("."), command);
    return process;
}

} // namespace

Server::Server(
    const Workshop& workshop, const std::vector<std::string>& command, int port, const std::string& ready)
    : m_process(start(workshop, command))
    , m_port(port)
{
    for (int i = 0; i < 1200; ++i) { // a minute: the machine may be busy
        if (ready.empty() ? answers(port) : workshop.read("server.log").find(ready) != std::string::npos)
            return;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    throw std::runtime_error(command[0] + " does not answer: " + workshop.read("server.log"));
}

Server::Server(Server&& other) noexcept
    : m_process(std::exchange(other.m_process, 0))
    , m_port(other.m_port)
{
}

Server::~Server()
{
    if (m_process <= 0)
        return;
    kill(m_process, SIGTERM);
    waitpid(m_process, nullptr, 0);
}

Server Server::web(const Workshop& workshop)
{
    const int port = freePort();
    return {workshop, {"python3", "-m", "http.server", std::to_string(port), "--bind", "127.0.0.1"}, port};
}

Server Server::responder(
    const Workshop& workshop, const std::string& issuer, const std::string& signer, const std::string& options)
{
    const int port = freePort();
    const std::string command = "exec openssl ocsp -ignore_err -index index -CA " + issuer + ".pem -rsigner " +
        signer + ".pem -rkey " + signer + ".key.pem -port " + std::to_string(port) + " " + options;
    // It never comes back from a connection that says nothing, so its port is not tried.
    return {workshop, {"sh", "-c", command}, port, "waiting for OCSP client connections"};
}

Server Server::validator(const Workshop& workshop, const std::string& authority, const std::string& signer)
{
    workshop.write("lies", "");
    const std::string script = std::filesystem::path(SIGILDESK_TEST_DATA).parent_path() / "validator.py";
    const int port = freePort();
    return {workshop, {"python3", script, std::to_string(port), authority, signer}, port};
}

Server Server::timeStamper(const Workshop& workshop, const std::string& signer)
{
    workshop.write("stamper.py", R"(
import http.server, subprocess, sys
port, signer = int(sys.argv[1]), sys.argv[2]
class Handler(http.server.BaseHTTPRequestHandler):
    def do_POST(self):
        with open(signer + '.tsq', 'wb') as query:
            query.write(self.rfile.read(int(self.headers['Content-Length'])))
        subprocess.run(['openssl', 'ts', '-reply', '-config', 'tsa.conf', '-signer', signer + '.pem', '-inkey',
                        signer + '.key.pem', '-queryfile', signer + '.tsq', '-out', signer + '.tsr'], check=True)
        self.send_response(200)
        self.send_header('Content-Type', 'application/timestamp-reply')
        self.end_headers()
        with open(signer + '.tsr', 'rb') as reply:
            self.wfile.write(reply.read())
http.server.HTTPServer(('127.0.0.1', port), Handler).serve_forever()
)");
    const int port = freePort();
    return {workshop, {"python3", "stamper.py", std::to_string(port), signer}, port};
}

Server Server::authority(const Workshop& workshop, const std::string& name, const std::vector<std::string>& options)
{
    const std::filesystem::path tests = std::filesystem::path(SIGILDESK_TEST_DATA).parent_path().parent_path();
    const int port = freePort();
    std::vector<std::string> command{
        "python3", tests / "support" / "mock_authority.py", std::to_string(port), name, "--secret", "the secret"};
    command.insert(command.end(), options.begin(), options.end());
    return {workshop, command, port};
}

Server Server::secure(const Workshop& workshop, const std::string& name, const Server& plain)
{
    workshop.write("secure.py", R"(
import http.client, http.server, ssl, sys
port, name, plain = int(sys.argv[1]), sys.argv[2], int(sys.argv[3])
class Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        self.pass_on(None)
    def do_POST(self):
        self.pass_on(self.rfile.read(int(self.headers['Content-Length'])))
    def pass_on(self, body):
        with open('asked', 'a') as asked:
            asked.write('.')
        connection = http.client.HTTPConnection('127.0.0.1', plain)
        connection.request(self.command, self.path, body, {'Content-Type': self.headers['Content-Type'] or 'none'})
        answer = connection.getresponse()
        self.send_response(answer.status)
        for field in ('Content-Type', 'Location'):
            if answer.getheader(field):
                self.send_header(field, answer.getheader(field))
        self.end_headers()
        self.wfile.write(answer.read())
context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
context.load_cert_chain(name + '.pem', name + '.key.pem')
server = http.server.HTTPServer(('127.0.0.1', port), Handler)
server.socket = context.wrap_socket(server.socket, server_side=True)
server.serve_forever()
)");
    const int port = freePort();
    return {workshop, {"python3", "secure.py", std::to_string(port), name, std::to_string(plain.port())}, port};
}

Server Server::bouncyStamper(
    const Workshop& workshop, const std::string& program, const std::string& signer, const std::string& scheme)
{
    const int port = freePort();
    const std::string order = "serve " + std::to_string(port) + " " + signer + ".crt " + signer + ".key " + scheme;
    return {workshop, {"sh", "-c", "echo '" + order + "' >stamper.order && exec " + program + " <stamper.order"},
        port, "waiting for requests"};
}

Server Server::bouncyAuthority(
    const Workshop& workshop, const std::string& program, const std::string& name, const std::string& secret)
{
    const int port = freePort();
    return {workshop,
        {"sh", "-c",
            "exec " + program + " " + std::to_string(port) + " " + name + ".crt " + name + ".key '" + secret + "'"},
        port};
}

Server Server::rude(const Workshop& workshop, const std::string& manner)
{
    const std::string script = std::filesystem::path(SIGILDESK_TEST_DATA).parent_path() / "rude_server.py";
    const int port = freePort();
    return {workshop, {"python3", script, std::to_string(port), manner}, port};
}

Server Server::answering(const Workshop& workshop, const std::string& answer, int status)
{
    workshop.write("answer", answer);
    workshop.write("location", "");
    workshop.write("answering.py", R"(
import http.server, sys
class Handler(http.server.BaseHTTPRequestHandler):
    def do_POST(self):
        self.rfile.read(int(self.headers['Content-Length']))
        self.answer(int(sys.argv[2]))
    def do_GET(self):
        self.answer(int(sys.argv[2]) if open('location').read() and self.path == '/' else 200)
    def answer(self, status):
        self.send_response(status)
        self.send_header('Location', open('location').read() or '/')
        self.end_headers()
        self.wfile.write(open('answer', 'rb').read())
http.server.HTTPServer(('127.0.0.1', int(sys.argv[1])), Handler).serve_forever()
)");
    const int port = freePort();
    return {workshop, {"python3", "answering.py", std::to_string(port), std::to_string(status)}, port};
}

Server Server::directory(const Workshop& workshop, const std::string& ldif)
{
    std::filesystem::create_directory(workshop.path("database"));
    workshop.write("slapd.conf",
        "include /etc/ldap/schema/core.schema\nmodulepath /usr/lib/ldap\nmoduleload back_mdb\n"
        "database mdb\nmaxsize 10485760\nsuffix \"c=KR\"\ndirectory " +
            workshop.path("database") + "\n");
    workshop.write("entries.ldif", ldif);
    workshop.run("PATH=$PATH:/usr/sbin slapadd -f slapd.conf -l entries.ldif");
    const int port = freePort();
    return {workshop,
        {"/usr/sbin/slapd", "-h", "ldap://127.0.0.1:" + std::to_string(port), "-f", "slapd.conf", "-d", "0"}, port};
}

} // namespace toolkit_test
