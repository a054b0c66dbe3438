# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""Korean PKI certificates: list or let the user pick, unlock, sign, verify, encrypt, decrypt, copy, judge, stamp.

    with sigildesk.Session() as session:
        entry = session.list(valid=True)[0]
        entry.unlock(password)
        signed = entry.sign(b"content")

Texts are str, data is bytes, times are aware datetimes in UTC. Whatever fails raises SigilError with the code of <sigil.h>,
also the use of a closed session (1008). One thread at a time is inside a session; others wait.
"""

from __future__ import annotations

import dataclasses
import datetime
import enum
import threading
from typing import Any, Iterable, List, Optional, Tuple

from ._library import Taken, ffi, library, path_in, record, secret_in, text_in, text_out

__all__ = ["Cipher", "Entry", "Family", "Fields", "Finding", "Form", "Language", "Pair", "Protection", "Purpose", "Session",
           "SigilError", "Signer", "Stamp", "Status", "Token", "Toolkit", "version"]


class Toolkit(enum.IntEnum):
    """The toolkit that does the cryptography."""
    MAKER = 0
    GPKI = 1


class Language(enum.IntEnum):
    """Of the names and messages that the library makes."""
    KOREAN = 1
    ENGLISH = 2


class Family(enum.IntFlag):
    """Families of certificates."""
    GPKI = 1
    NPKI = 2
    MPKI = 4
    PPKI = 8


class Pair(enum.IntEnum):
    """Which certificate and key of an entry."""
    SIGNING = 0
    KEY_MANAGEMENT = 1


class Form(enum.IntEnum):
    """What a signature is: a message with its content, one without it, or the value alone."""
    ATTACHED = 0
    DETACHED = 1
    RAW = 2


class Cipher(enum.IntEnum):
    """The cipher of an encrypted message."""
    AES256 = 0
    AES192 = 1
    AES128 = 2
    ARIA256 = 3
    ARIA192 = 4
    ARIA128 = 5
    SEED = 6
    TRIPLE_DES = 7


class Protection(enum.IntEnum):
    """How a PKCS#12 file is encrypted; every tool reads the first."""
    TRIPLE_DES = 0
    SEED = 1
    AES256 = 2


class Purpose(enum.IntEnum):
    """What a certificate is wanted for."""
    ANY = 0
    SIGN = 1
    ENCRYPT = 2


class SigilError(Exception):
    """A function of the library failed."""

    code: int
    """The number, one of enum SigilResult or a toolkit's own."""
    name: str
    """Its name in the headers, for example "SIGIL_WRONG_PASSWORD"; empty for a number without one."""
    sentence: str
    """What happened, for a person."""
    advice: str
    """What that person can do."""
    detail: str
    """What exactly went wrong; may be empty."""

    def __init__(self, code: int, language: Language = Language.ENGLISH, detail: str = "") -> None:
        text = ffi.new("struct SigilCodeText *")
        library.sigil_code_text(code, language, text)
        self.code, self.detail = code, detail
        self.name, self.sentence, self.advice = map(text_out, (text.name, text.sentence, text.advice))
        super().__init__(f"{code}: {self.sentence} {self.advice}".rstrip())


@dataclasses.dataclass(frozen=True)
class Fields:
    """What a certificate says. Texts are empty where it does not say."""
    name: str
    subject: str
    issuer: str
    issuer_name: str
    serial: str
    use: str
    policy: str
    policies: str
    version: str
    signature_algorithm: str
    key_algorithm: str
    key_length: str
    key_usage: str
    alternative_name: str
    authority_key_id: str
    subject_key_id: str
    revocation_list: str
    authority_access: str
    certificate_file: str
    key_file: str
    km_certificate_file: str
    km_key_file: str
    valid_from: datetime.datetime
    valid_to: datetime.datetime
    days_left: int
    expired: bool
    expires_soon: bool
    has_key: bool
    has_km: bool
    unlocked: bool
    family: int


@dataclasses.dataclass(frozen=True)
class Signer:
    """Who signed a message that was verified."""
    certificate: bytes
    """DER."""
    fields: Fields
    signing_time: Optional[datetime.datetime]
    """When the message says that it was signed; None when it does not say."""
    stamp_time: Optional[datetime.datetime]
    """The time of its time stamp; None without one."""
    stamp_code: int
    """The result of verifying the time stamp; 0 also when there is none."""


@dataclasses.dataclass(frozen=True)
class Status:
    """Whether a certificate is revoked."""
    revoked: bool
    by_list: bool
    """A revocation list says so; else a responder."""
    revoked_at: Optional[datetime.datetime]
    """None when it is not told."""


@dataclasses.dataclass(frozen=True)
class Stamp:
    """What a time stamp says."""
    time: datetime.datetime
    policy: str
    """OID, dotted."""
    serial: str


@dataclasses.dataclass(frozen=True)
class Token:
    """A token (PKCS#11) and the certificates on it, DER."""
    slot: int
    initialised: bool
    label: str
    maker: str
    model: str
    serial: str
    certificates: Tuple[bytes, ...]


@dataclasses.dataclass(frozen=True)
class Finding:
    """What stands at one place, and why it is listed or not."""
    listed: bool
    path: str
    rule: str
    """Name of the rule, for a program."""
    detail: str
    mend: str
    """How to mend it; empty when there is nothing to mend."""


_TIMES = {"valid_from", "valid_to"}
_FLAGS = {"expired", "expires_soon", "has_key", "has_km", "unlocked"}
_NUMBERS = {"days_left", "family"}


def version() -> str:
    """The version of the library."""
    return text_out(library.sigil_version())


class Session:
    """A session of the library. Close it, or use it in a with statement: its keys are wiped then."""

    def __init__(self, folder: Optional[str] = None, toolkit: Toolkit = Toolkit.MAKER,
                 language: Language = Language.ENGLISH) -> None:
        """folder: the library folder with toolkits and settings; None takes the installed one."""
        self._lock = threading.RLock()
        self._language = language
        self._handle: Any = ffi.NULL
        self._listing = 0
        kept = path_in(folder)
        made = ffi.new("SigilSession **")
        code = library.sigil_open(record("SigilOpenOptions", folder=kept, toolkit=toolkit, language=language), made)
        self._handle = ffi.gc(made[0], library.sigil_close) if made[0] else ffi.NULL
        self._check(code)

    def __enter__(self) -> Session:
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def close(self) -> None:
        """Wipes the keys and ends the session. Closing twice is harmless."""
        with self._lock:
            if self._handle:
                ffi.release(self._handle)
                self._handle = ffi.NULL

    def list(self, medium: Optional[str] = None, *, families: int = 0, issuer: Optional[str] = None,
             policy: Optional[str] = None, subject: Optional[str] = None, serial: Optional[str] = None,
             expires_within: int = 0, valid: bool = False, expired: bool = False) -> List[Entry]:
        """The certificates of the home folder, or of a mounted disk's folder. Those listed before are locked and cannot be
        used any more. families: a sum of Family, 0 for all; expires_within: days; valid, expired: only such."""
        texts = {name: text_in(text) for name, text in
                 {"issuer": issuer, "policy": policy, "subject": subject, "serial": serial}.items()}
        kept = path_in(medium)
        options = record("SigilListOptions", medium=kept, families=families, expires_within=expires_within,
                         valid=valid, expired=expired, **texts)
        count = ffi.new("int *")
        with self._lock:
            self._listing += 1
            self._call("sigil_list", options, count)
            return [Entry(self, self._listing, number) for number in range(count[0])]

    def pick(self, *, families: int = 0, policies: Iterable[str] = (), subject: Optional[str] = None,
             serial: Optional[str] = None, with_km: bool = False, no_expired: bool = False,
             lock_expired: bool = False) -> Optional[Entry]:
        """Lets the user choose a certificate in the dialog: its entry, unlocked, or None when the user gave up. The entries
        of the list stay. policies: OIDs; with_km: those with a key-management pair; no_expired, lock_expired: expired ones
        are not shown, or cannot be chosen. SigilError 1606 without the dialogs, 1607 without a display."""
        texts = {name: text_in(text) for name, text in
                 {"policies": "|".join(policies) or None, "subject": subject, "serial": serial}.items()}
        options = record("SigilPickOptions", families=families, with_km=with_km, no_expired=no_expired,
                         lock_expired=lock_expired, **texts)
        number = ffi.new("int *")
        with self._lock:
            code = library.sigil_pick(self._handle, options, number)
            if code == library.SIGIL_CANCELLED:
                return None
            self._check(code)
            return Entry(self, self._listing, number[0])

    def lock(self) -> None:
        """Wipes the private keys of all entries."""
        self._call("sigil_lock", library.SIGIL_ALL_ENTRIES)

    def import_pairs(self, pkcs12: bytes, password: str, medium: Optional[str] = None, *, replace: bool = False) -> None:
        """Brings the pairs of a PKCS#12 file into the home folder or a mounted disk's, where list finds them, under the
        password of the file. replace: those in the same place."""
        kept = path_in(medium)
        with secret_in(password) as secret:
            self._call("sigil_import", pkcs12, len(pkcs12), secret, kept, replace)

    def verify(self, message: bytes, data: Optional[bytes] = None) -> Tuple[bytes, List[Signer]]:
        """Verifies a signed message, a detached one over the data: its content, and who signed it."""
        count = ffi.new("int *")
        with self._lock, Taken() as content:
            self._call("sigil_verify", message, len(message), ffi.NULL if data is None else data, len(data or b""),
                       content.room, count)
            return content.copy(), [self._signer(index) for index in range(count[0])]

    def verify_raw(self, certificate: bytes, data: bytes, signature: bytes) -> None:
        """Verifies a signature value with a certificate."""
        self._call("sigil_verify_raw", certificate, len(certificate), data, len(data), signature, len(signature))

    def encrypt(self, recipients: Iterable[bytes], data: bytes, cipher: Cipher = Cipher.AES256) -> bytes:
        """Encrypts for the holders of these certificates (DER or PEM)."""
        kept = _kept(recipients)
        return self._bytes("sigil_encrypt", cipher, _array(kept), len(kept), data, len(data))

    def verify_certificate(self, certificate: bytes, trusted: Optional[Iterable[bytes]] = None, *,
                           purpose: Purpose = Purpose.ANY, time: Optional[datetime.datetime] = None,
                           revocation: bool = True) -> None:
        """Verifies path, validity, policies, purpose and revocation (DER or PEM). trusted: roots and others of the path,
        None for those of the settings; time: None is now. SigilError 3200 to 3208 says why it is not valid."""
        kept = _kept(trusted or ())
        array = _array(kept)
        seconds = 0 if time is None else int(time.timestamp())
        options = record("SigilJudgeOptions", trusted=array, trusted_count=len(kept), purpose=purpose, time=seconds,
                         no_revocation=not revocation)
        self._call("sigil_verify_certificate", options, certificate, len(certificate))

    def status(self, certificate: bytes, trusted: Optional[Iterable[bytes]] = None, *,
               responder: Optional[str] = None) -> Status:
        """Asks whether a certificate is revoked: its responder or the one at this address, else its revocation list.
        SigilError 1605 when nobody can tell."""
        kept = _kept(trusted or ())
        array, address = _array(kept), text_in(responder)
        options = record("SigilJudgeOptions", trusted=array, trusted_count=len(kept), responder=address)
        told = record("SigilStatus")
        self._call("sigil_status", options, certificate, len(certificate), told)
        return Status(bool(told.revoked), bool(told.by_list), _time(told.revoked_at))

    def timestamp(self, url: str, data: bytes) -> bytes:
        """A time-stamp token for the data from this authority (RFC 3161), verified."""
        kept = text_in(url)
        return self._bytes("sigil_timestamp", kept, data, len(data))

    def stamp(self, token: bytes, data: bytes) -> Stamp:
        """Verifies a time-stamp token over the data that it is for, and reads it."""
        told = record("SigilStamp")
        with self._lock:
            self._call("sigil_stamp", token, len(token), data, len(data), told)
            return Stamp(_moment(told.time), text_out(told.policy), text_out(told.serial))

    def tokens(self) -> List[Token]:
        """The tokens (PKCS#11) and the certificates on them. Nobody logs in."""
        count = ffi.new("int *")
        with self._lock:
            self._call("sigil_tokens", count)
            return [self._token(index) for index in range(count[0])]

    def examine(self, medium: Optional[str] = None) -> List[Finding]:
        """Why certificates of the home folder, or of a mounted disk's folder, are listed or not."""
        kept, count = path_in(medium), ffi.new("int *")
        with self._lock:
            self._call("sigil_examine", kept, count)
            return [self._finding(index) for index in range(count[0])]

    def fields(self, certificate: bytes) -> Fields:
        """What any certificate (DER or PEM) says."""
        return self._fields("sigil_certificate_fields", certificate, len(certificate))

    def _signer(self, index: int) -> Signer:
        told = record("SigilSigner")
        self._call("sigil_signer", index, told)
        certificate = bytes(ffi.buffer(told.certificate, told.certificate_size))
        return Signer(certificate, self.fields(certificate), _time(told.signing_time), _time(told.stamp_time),
                      told.stamp_code)

    def _token(self, index: int) -> Token:
        told = record("SigilToken")
        self._call("sigil_token", index, told)
        certificates = (self._bytes("sigil_token_certificate", index, number) for number in range(told.certificates))
        return Token(told.slot, bool(told.initialised), text_out(told.label), text_out(told.maker), text_out(told.model),
                     text_out(told.serial), tuple(certificates))

    def _finding(self, index: int) -> Finding:
        told = record("SigilFinding")
        self._call("sigil_finding", index, told)
        return Finding(bool(told.listed), text_out(told.path), text_out(told.rule), text_out(told.detail),
                       text_out(told.mend))

    def _fields(self, function: str, *arguments: Any) -> Fields:
        told = record("SigilFields")
        with self._lock:
            self._call(function, *arguments, told)
            return Fields(**{field.name: _value(told, field.name) for field in dataclasses.fields(Fields)})

    def _bytes(self, function: str, *arguments: Any) -> bytes:
        with self._lock, Taken() as taken:
            self._call(function, *arguments, taken.room)
            return taken.copy()

    def _call(self, function: str, *arguments: Any) -> None:
        with self._lock:
            self._check(getattr(library, function)(self._handle, *arguments))

    def _check(self, code: int) -> None:
        if code != 0:
            raise SigilError(code, self._language, text_out(library.sigil_error_text(self._handle)))


class Entry:
    """A certificate of a list, with its private key. Made by Session.list; of a newer list there are newer ones."""

    def __init__(self, session: Session, listing: int, number: int) -> None:
        self._session, self._listing, self._number = session, listing, number

    @property
    def fields(self) -> Fields:
        """What the certificate says."""
        return self._session._fields("sigil_fields", self._current())

    @property
    def name(self) -> str:
        """The common name of the holder."""
        return self.fields.name

    def certificate(self, pair: Pair = Pair.SIGNING) -> bytes:
        """The certificate, DER."""
        return self._bytes("sigil_certificate", pair)

    def unlock(self, password: str) -> None:
        """Opens the private keys; they stay in the session until it is closed, locked or lists anew."""
        with secret_in(password) as kept:
            self._call("sigil_unlock", kept)

    def lock(self) -> None:
        """Wipes the private keys that unlock opened."""
        self._call("sigil_lock")

    def private_key(self, new_password: Optional[str] = None, pair: Pair = Pair.SIGNING) -> bytes:
        """The unlocked private key, PKCS#8, encrypted with a new password when one is given."""
        with secret_in(new_password) as kept:
            return self._bytes("sigil_private_key", pair, kept)

    def identity(self, number: str) -> None:
        """Checks that the holder has this identity number: SigilError 1132 when not."""
        with secret_in(number) as kept:
            self._call("sigil_identity", kept)

    def sign(self, data: bytes, form: Form = Form.ATTACHED, stamp_url: Optional[str] = None) -> bytes:
        """Signs with the unlocked key. stamp_url: the authority whose time stamp goes into the message."""
        kept = text_in(stamp_url)
        return self._bytes("sigil_sign", record("SigilSignOptions", form=form, stamp_url=kept), data, len(data))

    def decrypt(self, message: bytes) -> bytes:
        """Decrypts a message with the unlocked key."""
        return self._bytes("sigil_decrypt", message, len(message))

    def export(self, password: str, protection: Protection = Protection.TRIPLE_DES) -> bytes:
        """A PKCS#12 file with all unlocked pairs, under this password."""
        with secret_in(password) as kept:
            return self._bytes("sigil_export", protection, kept)

    def copy(self, medium: Optional[str] = None, *, replace: bool = False) -> None:
        """Copies the files as they are to the home folder or to a mounted disk's. replace: those in the same place."""
        kept = path_in(medium)
        self._call("sigil_copy", kept, replace)

    def delete(self) -> None:
        """Deletes the files. The entry stays in the list, and its keys if it is unlocked."""
        self._call("sigil_delete")

    def change_password(self, old_password: str, new_password: str) -> None:
        """Puts all keys under a new password, in their files."""
        with secret_in(old_password) as old, secret_in(new_password) as new:
            self._call("sigil_change_password", old, new)

    def _current(self) -> int:
        """The number in the session's list; a session that is closed, and a list that is not the last, have none."""
        if self._session._handle and self._listing != self._session._listing:
            raise SigilError(library.SIGIL_BAD_ARGUMENT, self._session._language, "the session has listed anew")
        return self._number

    def _call(self, function: str, *arguments: Any) -> None:
        with self._session._lock:
            self._session._call(function, self._current(), *arguments)

    def _bytes(self, function: str, *arguments: Any) -> bytes:
        with self._session._lock:
            return self._session._bytes(function, self._current(), *arguments)


def _kept(certificates: Iterable[bytes]) -> List[Any]:
    """The bytes of certificates, which stay as long as what is answered."""
    return [ffi.from_buffer("unsigned char[]", certificate) for certificate in certificates]


def _array(kept: List[Any]) -> Any:
    """Certificates as the library takes several; null for none."""
    return ffi.new("SigilBytes[]", [(certificate, len(certificate)) for certificate in kept]) if kept else ffi.NULL


def _value(told: Any, name: str) -> Any:
    value = getattr(told, name)
    if name in _TIMES:
        return _moment(value)
    if name in _FLAGS:
        return bool(value)
    return value if name in _NUMBERS else text_out(value)


def _moment(seconds: int) -> datetime.datetime:
    return datetime.datetime.fromtimestamp(seconds, datetime.timezone.utc)


def _time(seconds: int) -> Optional[datetime.datetime]:
    return _moment(seconds) if seconds else None
