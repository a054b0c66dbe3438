# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""A certification authority for tests and the demo:

    mock_authority.py PORT NAME [--secret TEXT] [--subject NAME] [--certificate FILE] [OPTION...]

`openssl cmp -port` speaks the protocol, but hands out one certificate that it is told beforehand. This program stands
before it, in the folder with NAME.pem and NAME.key.pem: it issues a certificate for the key in each request, starts the
command with that, and hands the messages of the transaction on to it. It may be told to issue it for another subject,
or to hand out a certificate of old. OPTIONs are more of the command's own. PORT 0 is any; the address is printed."""

import argparse
import http.server
import pathlib
import signal
import socket
import subprocess
import sys
import urllib.request

IR, CR, KUR, RR = 0xA0, 0xA2, 0xA7, 0xAB
SERIAL, SUBJECT, PUBLIC_KEY = 0x81, 0xA5, 0xA6


def elements(der):
    """(tag, content, whole) of each element."""
    at = 0
    while at < len(der):
        begin, tag, length = at, der[at], der[at + 1]
        at += 2
        if length & 0x80:
            octets = length & 0x7F
            length = int.from_bytes(der[at:at + octets], "big")
            at += octets
        at += length
        yield tag, der[at - length:at], der[begin:at]


def content(der, *path):
    """Content of the element that the indices lead to."""
    for index in path:
        der = list(elements(der))[index][1]
    return der


def fields(der, *path):
    """Content of the elements that the indices lead to, by their tags."""
    return {tag: inner for tag, inner, _ in elements(content(der, *path))}


class Authority:
    def __init__(self, settings, options):
        self.name, self.settings, self.options = settings.name, settings, options
        self.command, self.port = None, 0

    def answer(self, message):
        kind, body, _ = list(elements(content(message, 0)))[1]
        if kind in (IR, CR, KUR):
            self.start(kind, self.issue(self.serial(kind, body), fields(body, 0, 0, 0, 1)))
        elif kind == RR:
            serial = int.from_bytes(fields(body, 0, 0, 0)[SERIAL], "big")
            self.start(kind, self.settings.certificate or f"issued-{serial}.pem")
        request = urllib.request.Request(f"http://127.0.0.1:{self.port}/", message,
                                         {"Content-Type": "application/pkixcmp"})
        with urllib.request.urlopen(request) as reply:
            return reply.read()

    @staticmethod
    def serial(kind, body):
        """The command wants that of the certificate that is renewed."""
        if kind == KUR:
            return int.from_bytes(content(body, 0, 0, 0, 2, 0, 1, 1), "big")
        return 1000 + len(list(pathlib.Path().glob("issued-*.pem")))

    def issue(self, serial, template):
        if self.settings.certificate:
            return self.settings.certificate
        key = bytes([0x30]) + self.length(template[PUBLIC_KEY]) + template[PUBLIC_KEY]
        pathlib.Path("key.der").write_bytes(key)
        subprocess.run(["openssl", "pkey", "-pubin", "-inform", "DER", "-in", "key.der", "-out", "key.pem"], check=True)
        subprocess.run(["openssl", "req", "-new", "-utf8", "-subj", self.settings.subject or self.subject(template[SUBJECT]),
                        "-key", f"{self.name}.key.pem", "-out", "request.pem"], check=True)
        certificate = f"issued-{serial}.pem"
        subprocess.run(["openssl", "x509", "-req", "-in", "request.pem", "-force_pubkey", "key.pem", "-CA",
                        f"{self.name}.pem", "-CAkey", f"{self.name}.key.pem", "-set_serial", str(serial), "-days", "30",
                        "-out", certificate], check=True)
        return certificate

    @staticmethod
    def length(data):
        return bytes([0x82]) + len(data).to_bytes(2, "big")

    @staticmethod
    def subject(name):
        types = {b"\x55\x04\x03": "CN", b"\x55\x04\x06": "C", b"\x55\x04\x0a": "O", b"\x55\x04\x0b": "OU"}
        parts = ""
        for _, part, _ in elements(content(name, 0)):
            kind, value = (inner for _, inner, _ in elements(content(part, 0)))
            parts += f"/{types[kind]}={value.decode()}"
        return parts

    def start(self, kind, certificate):
        self.stop()
        with socket.socket() as probe:
            probe.bind(("127.0.0.1", 0))
            self.port = probe.getsockname()[1]
        own = ["-srv_secret", f"pass:{self.settings.secret}", "-srv_ref", "server"] if kind == IR else [
            "-srv_cert", f"{self.name}.pem", "-srv_key", f"{self.name}.key.pem", "-srv_trusted", f"{self.name}.pem"]
        self.command = subprocess.Popen(
            ["openssl", "cmp", "-config", "", "-port", str(self.port), "-rsp_cert", certificate, "-rsp_capubs",
             f"{self.name}.pem", *own, *self.options], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        said = ""
        for line in self.command.stdout:
            said += line
            if line.startswith("ACCEPT"):
                return
        raise RuntimeError(said)

    def stop(self):
        if self.command:
            self.command.kill()
            self.command.wait()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("port", type=int)
    parser.add_argument("name")
    parser.add_argument("--secret", default="secret")
    parser.add_argument("--subject")
    parser.add_argument("--certificate")
    settings, options = parser.parse_known_args()
    authority = Authority(settings, options)
    signal.signal(signal.SIGTERM, lambda *_: sys.exit())  # by way of what ends the command

    class Handler(http.server.BaseHTTPRequestHandler):
        def do_POST(self):
            reply = authority.answer(self.rfile.read(int(self.headers["Content-Length"])))
            self.send_response(200)
            self.send_header("Content-Type", "application/pkixcmp")
            self.end_headers()
            self.wfile.write(reply)

    with http.server.HTTPServer(("127.0.0.1", settings.port), Handler) as server:
        print(f"http://127.0.0.1:{server.server_port}/", flush=True)
        try:
            server.serve_forever()
        finally:
            authority.stop()


if __name__ == "__main__":
    main()
