# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""A server that misbehaves: rude_server.py PORT MANNER. Manners that begin with "ldap" speak LDAP, the others HTTP."""

import socketserver
import sys
import time

PORT, MANNER = int(sys.argv[1]), sys.argv[2]
BLOCK = bytes(64 * 1024)


def element(tag, content, length=None):
    """With a length field that may lie."""
    return bytes([tag, 0x84]) + (len(content) if length is None else length).to_bytes(4, 'big') + content


def message(number, operation):
    return element(0x30, element(0x02, bytes([number])) + operation)


def result(tag, code=0):
    return element(tag, element(0x0A, bytes([code])) + element(0x04, b'') + element(0x04, b''))


def entry(attributes):
    return element(0x64, element(0x04, b'cn=x,c=KR') + element(0x30, attributes))


def attribute(name, values):
    return element(0x30, element(0x04, name) + element(0x31, values))


BOUND = message(1, result(0x61))
HEAD = b'HTTP/1.1 200 OK\r\nContent-Type: application/x\r\n'


class Guest(socketserver.BaseRequestHandler):
    def handle(self):
        try:
            getattr(self, MANNER)()
        except OSError:
            pass  # whoever asked had enough

    def ask(self):
        return self.request.recv(65536)

    def say(self, data):
        self.request.sendall(data)

    def forever(self, data, pause=0.0):
        while True:
            self.say(data)
            time.sleep(pause)

    def quiet(self):
        time.sleep(60)

    def answer(self, data):
        self.ask()
        self.say(data)

    # HTTP
    def silent(self):
        self.quiet()

    def half(self):
        self.answer(HEAD + b'Content-Length: 1000000\r\n\r\n' + BLOCK)
        self.quiet()

    def slow(self):
        self.answer(HEAD + b'\r\n')
        self.forever(b'x', 0.2)

    def slow_head(self):
        self.ask()
        self.forever(b'x', 0.2)

    def interim(self):
        self.ask()
        self.forever(b'HTTP/1.1 100 Continue\r\n\r\n', 0.001)

    def slow_redirection(self):
        self.ask()
        time.sleep(7)
        self.say(b'HTTP/1.1 302 Found\r\nLocation: /again\r\nContent-Length: 0\r\n\r\n')

    def redirection(self):
        if not self.ask():
            return
        with open('asked', 'ab') as asked:
            asked.write(b'.')
        self.say(b'HTTP/1.1 302 Found\r\nLocation: /again\r\nContent-Length: 0\r\nConnection: close\r\n\r\n')

    def elsewhere(self):
        self.answer(b'HTTP/1.1 302 Found\r\nLocation: file:///etc/passwd\r\nContent-Length: 0\r\n\r\n')

    def short(self):
        self.answer(HEAD + b'Content-Length: 1000000\r\n\r\nlittle')

    def huge(self):
        self.answer(HEAD + b'Content-Length: 2000000000\r\n\r\n')
        self.forever(BLOCK)

    def negative(self):
        self.answer(HEAD + b'Content-Length: -1\r\n\r\nlittle')

    def endless(self):
        self.answer(HEAD + b'\r\n')
        self.forever(BLOCK)

    def endless_chunks(self):
        self.answer(HEAD + b'Transfer-Encoding: chunked\r\n\r\n')
        self.forever(b'10000\r\n' + BLOCK + b'\r\n')

    def endless_head(self):
        self.answer(HEAD)
        self.forever(b'X-More: ' + b'x' * 1000 + b'\r\n')

    def endless_line(self):
        self.answer(HEAD + b'X-More: ')
        self.forever(b'x' * 65536)

    def compressed(self):
        import zlib
        squeeze = zlib.compressobj(9, zlib.DEFLATED, 31)
        self.answer(HEAD + b'Transfer-Encoding: gzip\r\nContent-Encoding: gzip\r\n\r\n')
        while True:
            self.say(squeeze.compress(bytes(1 << 20)))

    # LDAP
    def ldap_silent(self):
        self.quiet()

    def ldap_half(self):
        self.answer(element(0x30, b'\x02\x01\x01', length=10000000))
        self.quiet()

    def ldap_slow(self):
        self.answer(element(0x30, b'\x02\x01\x01', length=10000000))
        self.forever(b'x', 0.2)

    def ldap_silent_search(self):
        self.answer(BOUND)
        self.quiet()

    def ldap_slow_entries(self):
        self.answer(BOUND)
        self.ask()
        self.forever(message(2, entry(attribute(b'other', element(0x04, b'x')))), 1)

    def ldap_others(self):
        self.answer(BOUND)
        self.ask()
        self.forever(message(9, entry(attribute(b'cACertificate', element(0x04, b'x')))), 0.001)

    def ldap_closing(self):
        self.answer(BOUND)
        self.ask()

    def ldap_huge(self):
        self.answer(element(0x30, b'\x02\x01\x01', length=2000000000))
        self.forever(BLOCK)

    def ldap_huge_value(self):
        self.answer(BOUND)
        self.ask()
        self.say(element(0x30, b'\x02\x01\x02' + element(0x64, b'', length=1999999990), length=2000000000))
        self.forever(BLOCK)

    def ldap_endless_bind(self):
        self.ask()
        self.forever(message(1, entry(attribute(b'cACertificate', element(0x04, BLOCK)))))

    def ldap_endless_entries(self):
        self.answer(BOUND)
        self.ask()
        self.forever(message(2, entry(attribute(b'other', element(0x04, bytes(12 << 20))))))

    def ldap_endless_references(self):
        self.answer(BOUND)
        self.ask()
        self.forever(message(2, element(0x73, element(0x04, b'ldap://127.0.0.1:1/') * 4000)))

    def ldap_many_values(self):
        self.answer(BOUND)
        self.ask()
        self.say(message(2, entry(attribute(b'cACertificate;binary', b'\x04\x00' * (7 << 20)))))
        self.say(message(2, result(0x65)))

    def ldap_garbled(self):
        self.answer(BOUND)
        self.ask()
        self.say(message(2, element(0x64, element(0x04, b'cn=x') + element(0x30, b'\x30\x84\xff\xff\xff\xff\x04'))))
        self.quiet()


class Server(socketserver.ThreadingTCPServer):
    allow_reuse_address = True
    daemon_threads = True


Server(('127.0.0.1', PORT), Guest).serve_forever()
