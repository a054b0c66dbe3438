# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""A validation server (SCVP, RFC 5055) for the tests: validator.py PORT AUTHORITY SIGNER, in a workshop's folder.

It reads and writes DER by itself and leaves paths and signatures to the openssl command, so that it shares no mistake with
the client. What it was asked is left in the file "request". The file "lies" changes what it says: a JSON object with the
names that answer() looks up.
"""
import hashlib
import http.server
import json
import subprocess
import sys
import time

SEQUENCE, SET, INTEGER, OCTETS, OID, UTF8, ENUMERATED, TIME = 0x30, 0x31, 2, 4, 6, 0x0C, 10, 0x18
SHA1, SHA256 = '1.3.14.3.2.26', '2.16.840.1.101.3.4.2.1'
CERT_VAL_REQUEST, CERT_VAL_RESPONSE = '1.2.840.113549.1.9.16.1.10', '1.2.840.113549.1.9.16.1.11'
SIGNED_DATA = '1.2.840.113549.1.7.2'
STATUS_CHECKED_PATH, DEFAULT_POLICY = '1.3.6.1.5.5.7.17.3', '1.3.6.1.5.5.7.19.1'


def element(tag, *contents):
    content = b''.join(contents)
    size = len(content)
    if size < 128:
        return bytes([tag, size]) + content
    octets = size.to_bytes((size.bit_length() + 7) // 8, 'big')
    return bytes([tag, 128 + len(octets)]) + octets + content


def oid(dotted):
    numbers = [int(number) for number in dotted.split('.')]
    content = b''
    for number in [40 * numbers[0] + numbers[1]] + numbers[2:]:
        septets = [number & 127]
        while number := number >> 7:
            septets.insert(0, 128 + (number & 127))
        content += bytes(septets)
    return element(OID, content)


def number(value, tag=INTEGER):
    return element(tag, value.to_bytes(value.bit_length() // 8 + 1, 'big'))


def moment(seconds, tag=TIME):
    return element(tag, time.strftime('%Y%m%d%H%M%SZ', time.gmtime(seconds)).encode())


class Refusal(Exception):
    pass


def take(data, tag):
    """Content of the element at the start of data, which must have the tag, and what follows it."""
    if len(data) < 2 or data[0] != tag:
        raise Refusal('tag %02x expected in %s' % (tag, data[:8].hex()))
    size, begin = data[1], 2
    if size >= 128:
        begin = 2 + size - 128
        size = int.from_bytes(data[2:begin], 'big')
    if begin + size > len(data):
        raise Refusal('length')
    return data[begin:begin + size], data[begin + size:]


def only(data, tag):
    content, rest = take(data, tag)
    if rest:
        raise Refusal('more than expected')
    return content


def expect(got, wanted):
    if got != wanted:
        raise Refusal('%s expected, not %s' % (wanted.hex(), got.hex()))


def read_request(message):
    """The certificate that is asked about, the nonce and the CVRequest."""
    content_type, rest = take(only(message, SEQUENCE), OID)
    expect(element(OID, content_type), oid(CERT_VAL_REQUEST))
    request = only(rest, 0xA0)
    query, rest = take(only(request, SEQUENCE), SEQUENCE)
    nonce = only(rest, 0x81)
    if len(nonce) < 16:
        raise Refusal('short nonce')
    references, rest = take(query, 0xA0)
    certificate = element(SEQUENCE, only(references, 0xA0))
    # One check, the default policy, and no response that was made before.
    expect(rest, element(SEQUENCE, oid(STATUS_CHECKED_PATH)) +
           element(SEQUENCE, element(SEQUENCE, oid(DEFAULT_POLICY))) + element(SEQUENCE, bytes.fromhex('830100')))
    return certificate, nonce, request


def is_valid(certificate, authority):
    subject = subprocess.run(['openssl', 'x509', '-inform', 'DER'], input=certificate, capture_output=True, check=True)
    verify = ['openssl', 'verify', '-partial_chain', '-trusted', authority + '.pem']
    return subprocess.run(verify, input=subject.stdout, capture_output=True).returncode == 0


def sign(response, signer, options):
    command = ['openssl', 'cms', '-sign', '-binary', '-nodetach', '-md', 'sha256', '-outform', 'DER']
    for name in signer.split():
        command += ['-signer', name + '.pem', '-inkey', name + '.key.pem']
    return subprocess.run(command + options, input=response, capture_output=True, check=True).stdout


def envelope(dotted, content):
    return element(SEQUENCE, oid(dotted), element(0xA0, content))


def without_signer(response=None):
    octets = b'' if response is None else element(0xA0, element(OCTETS, response))
    content = element(SEQUENCE, oid(CERT_VAL_RESPONSE), octets)
    return envelope(SIGNED_DATA, element(SEQUENCE, number(3), element(SET), content, element(SET)))


def request_reference(request, lies):
    algorithm = lies.get('hash', SHA1)
    value = {SHA1: hashlib.sha1, SHA256: hashlib.sha256}.get(algorithm, hashlib.sha1)(request).digest()
    named = b'' if algorithm == SHA1 else element(SEQUENCE, oid(algorithm))
    if lies.get('other request'):
        value = bytes([value[0] ^ 1]) + value[1:]
    if lies.get('full request'):
        return element(0xA1, element(0xA1, only(request, SEQUENCE)))
    return element(0xA1, element(0xA0, named, element(OCTETS, value)))


def extensions(tag, lies, name):
    critical = {'critical': b'\x01\x01\xff', 'harmless': b''}.get(lies.get(name))
    return b'' if critical is None else element(
        tag, element(SEQUENCE, oid('1.2.3.4'), critical, element(OCTETS, b'\x05\x00')))


def reply(certificate, valid, now, lies):
    status = lies.get('reply', 0 if valid else 6)
    result = lies.get('check', 0 if valid else 1)
    about = element(lies.get('reference', 0xA0), only(certificate, SEQUENCE))
    one = element(SEQUENCE, oid(lies.get('checked', STATUS_CHECKED_PATH)), number(result) if result else b'')
    errors = element(0xA0, oid('1.3.6.1.5.5.7.19.3.4')) if status else b''
    return element(SEQUENCE, about, number(status, ENUMERATED) if status else b'', moment(now),
                   element(SEQUENCE, one * lies.get('checks', 1)), element(SEQUENCE), errors,
                   moment(now + 60, 0x81) if lies.get('all') else b'', extensions(0xA2, lies, 'reply extension'))


def response(message, authority, lies):
    """A CVResponse."""
    now = int(time.time()) - lies.get('age', 0)
    version = number(lies.get('version', 1))
    try:
        certificate, nonce, request = read_request(message)
    except Refusal as refusal:
        status = element(SEQUENCE, number(20, ENUMERATED), element(UTF8, str(refusal).encode()))
        return element(SEQUENCE, version, number(7), moment(now), status)
    if 'status' in lies:
        text = element(UTF8, lies['text'].encode()) if 'text' in lies else b''
        return element(SEQUENCE, version, number(7), moment(now),
                       element(SEQUENCE, number(lies['status'], ENUMERATED), text))
    valid = is_valid(certificate, authority)
    if 'certificate' in lies:
        certificate = open(lies['certificate'], 'rb').read()
    if lies.get('other nonce'):
        nonce = nonce[:-1] + bytes([nonce[-1] ^ 1])
    policy = element(0xA0, element(SEQUENCE, oid(DEFAULT_POLICY)))
    reference = b'' if lies.get('no reference') else request_reference(request, lies)
    names = element(0xA2, element(0x82, b'me')) + element(0xA3, element(0x82, b'you')) if lies.get('all') else b''
    replies = element(0xA4, reply(certificate, valid, now, lies) * lies.get('replies', 1))
    repeated = b'' if lies.get('no nonce') else element(0x85, nonce)
    context = element(0x86, b'context') if lies.get('all') else b''
    text = element(0x88, b'text') if lies.get('all') else b''
    return element(SEQUENCE, version, number(300), moment(now), element(SEQUENCE), policy, reference, names, replies,
                   repeated, context, extensions(0xA7, lies, 'extension'), text)


def answer(message, authority, signer, lies):
    content = response(message, authority, lies) + bytes.fromhex(lies.get('trailer', ''))
    content = bytes.fromhex(lies['content']) if 'content' in lies else content
    form = lies.get('form', 'signed')
    if form == 'plain':
        return envelope(lies.get('type', CERT_VAL_RESPONSE), content) + bytes.fromhex(lies.get('behind', ''))
    if form == 'no content':
        return without_signer()
    if form == 'no signer':
        return without_signer(content)
    signed = sign(content, lies.get('signer', signer),
                  ['-econtent_type', lies.get('type', CERT_VAL_RESPONSE)] + lies.get('options', []))
    if 'called' in lies:  # on the outside, where no signature covers it
        signed = signed.replace(oid(lies['type']), oid(lies['called']), 1)
    return signed


class Handler(http.server.BaseHTTPRequestHandler):
    def do_POST(self):
        message = self.rfile.read(int(self.headers['Content-Length']))
        open('request', 'wb').write(message)
        known = self.headers['Content-Type'] == 'application/scvp-cv-request'
        body = answer(message, *sys.argv[2:4], json.loads(open('lies').read() or '{}')) if known else b''
        self.send_response(200 if known else 415)
        self.send_header('Content-Type', 'application/scvp-cv-response')
        self.end_headers()
        self.wfile.write(body)


if __name__ == '__main__':
    http.server.HTTPServer(('127.0.0.1', int(sys.argv[1])), Handler).serve_forever()
