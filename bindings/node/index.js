// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

'use strict';

const native = require('./sigildesk_node.node');

const Toolkit = Object.freeze({ MAKER: 0, GPKI: 1 });
const Language = Object.freeze({ KOREAN: 1, ENGLISH: 2 });
const Pair = Object.freeze({ SIGNING: 0, KEY_MANAGEMENT: 1 });
const Form = Object.freeze({ ATTACHED: 0, DETACHED: 1, RAW: 2 });
const Cipher = Object.freeze({
  AES256: 0, AES192: 1, AES128: 2, ARIA256: 3, ARIA192: 4, ARIA128: 5, SEED: 6, TRIPLE_DES: 7,
});
const Protection = Object.freeze({ TRIPLE_DES: 0, SEED: 1, AES256: 2 });
const Purpose = Object.freeze({ ANY: 0, SIGN: 1, ENCRYPT: 2 });
const BAD_ARGUMENT = 1001;
const CANCELLED = -1;
const ALL_ENTRIES = -1;

/** A function of the library failed. */
class SigilError extends Error {
  constructor(code, language, detail) {
    const { name, sentence, advice } = native.describe(code, language);
    super(`${code}: ${sentence} ${advice}`.trim());
    this.name = 'SigilError';
    Object.assign(this, { code, codeName: name, sentence, advice, detail });
  }
}

const inOrder = (count, what) => Array.from({ length: count }, (_, index) => what(index));
const timeOf = (seconds) => (seconds === 0 ? null : new Date(seconds * 1000));

/** A session of the library. Close it: its keys are wiped then, or at the latest when nobody has it any more. */
class Session {
  #handle = native.create();
  #language;
  #listing = 0;
  #closed = false;

  constructor({ folder = null, toolkit = Toolkit.MAKER, language = Language.ENGLISH } = {}) {
    this.#language = language;
    this._call('open', folder, toolkit, language);
  }

  /** Wipes the keys and ends the session. Closing twice is harmless. */
  close() {
    this.#closed = true;
    native.close(this.#handle);
  }

  /** The certificates of a store. Those listed before are locked, and answer 1001 from now on. */
  list({ medium, issuer, policy, subject, serial, families = 0, expiresWithin = 0, valid = false, expired = false } = {}) {
    this.#listing += 1;
    const count = this._call('list', {
      medium, issuer, policy, subject, serial, families, expiresWithin, valid: Number(valid), expired: Number(expired),
    });
    return inOrder(count, (number) => new Entry(this, this.#listing, number));
  }

  /** Lets the user choose a certificate in the dialog: its entry, unlocked; null when the user gave up. The entries of the list
   *  stay. 1606 without the dialogs, 1607 without a display. */
  pick({ policies = [], subject, serial, families = 0, withKm = false, noExpired = false, lockExpired = false } = {}) {
    try {
      const number = this._call('pick', {
        policies: policies.join('|') || null, subject, serial, families, withKm: Number(withKm),
        noExpired: Number(noExpired), lockExpired: Number(lockExpired),
      });
      return new Entry(this, this.#listing, number);
    } catch (failure) {
      if (failure.code === CANCELLED) return null;
      throw failure;
    }
  }

  /** Wipes the private keys of all entries. */
  lock() {
    this._call('lock', ALL_ENTRIES);
  }

  /** Brings the pairs of a PKCS#12 file into the home folder or a mounted disk's, where list finds them, under the password of
   *  the file. */
  importPairs(pkcs12, password, medium = null, { replace = false } = {}) {
    this._call('importPairs', pkcs12, password, medium, Number(replace));
  }

  /** Verifies a signed message, a detached one over the data: { content, signers }. */
  verify(message, data = null) {
    const { content, signers } = this._call('verify', message, data);
    return { content, signers: inOrder(signers, (index) => this.#signer(index)) };
  }

  /** Verifies a signature value with a certificate. */
  verifyRaw(certificate, data, signature) {
    this._call('verifyRaw', certificate, data, signature);
  }

  /** Encrypts for the holders of these certificates (DER or PEM). */
  encrypt(recipients, data, cipher = Cipher.AES256) {
    return this._call('encrypt', cipher, recipients, data);
  }

  /** What any certificate (DER or PEM) says. */
  fields(certificate) {
    return this._fields('certificateFields', certificate);
  }

  /** Verifies path, validity, policies, purpose and revocation (DER or PEM): SigilError 3200 to 3208 when it is not valid. trusted:
   *  roots and others of the path, none for those of the settings; time: a Date, null for the present. */
  verifyCertificate(certificate, { trusted = [], purpose = Purpose.ANY, time = null, revocation = true } = {}) {
    const seconds = time === null ? 0 : Math.floor(time.getTime() / 1000);
    this._call('verifyCertificate', certificate, trusted, purpose, seconds, Number(!revocation));
  }

  /** Asks whether a certificate is revoked, the responder, else its revocation list: { revoked, byList, revokedAt }. SigilError
   *  1605 when nobody can tell. */
  status(certificate, { trusted = [], responder = null } = {}) {
    const told = this._call('status', certificate, trusted, responder);
    return { ...told, revokedAt: timeOf(told.revokedAt) };
  }

  /** A time-stamp token for the data from this authority (RFC 3161), verified. */
  timestamp(url, data) {
    return this._call('timestamp', url, data);
  }

  /** Verifies a time-stamp token over the data that it is for: { time, policy, serial }. */
  stamp(token, data) {
    const told = this._call('stamp', token, data);
    return { ...told, time: new Date(told.time * 1000) };
  }

  /** The tokens (PKCS#11) and the certificates on them, DER. Nobody logs in. */
  tokens() {
    return inOrder(this._call('tokens'), (index) => this.#token(index));
  }

  /** Why certificates of the home folder, or of a mounted disk's folder, are listed or not. */
  examine(medium = null) {
    return inOrder(this._call('examine', medium), (index) => this._call('finding', index));
  }

  #token(index) {
    const told = this._call('token', index);
    return { ...told, certificates: inOrder(told.certificates, (place) => this._call('tokenCertificate', index, place)) };
  }

  #signer(index) {
    const told = this._call('signer', index);
    return {
      ...told,
      fields: this.fields(told.certificate),
      signingTime: timeOf(told.signingTime),
      stampTime: timeOf(told.stampTime),
    };
  }

  _fields(name, ...words) {
    const told = this._call(name, ...words);
    return { ...told, validFrom: new Date(told.validFrom * 1000), validTo: new Date(told.validTo * 1000) };
  }

  _call(name, ...words) {
    try {
      return native[name](this.#handle, ...words);
    } catch (failure) {
      if (failure instanceof Error) throw failure;
      throw new SigilError(failure.code, this.#language, failure.detail);
    }
  }

  /** An entry's number, as long as its list is the last; a closed session refuses any. */
  _number(listing, number) {
    if (!this.#closed && listing !== this.#listing)
      throw new SigilError(BAD_ARGUMENT, this.#language, 'the session has listed anew');
    return number;
  }
}
if (Symbol.dispose) Session.prototype[Symbol.dispose] = Session.prototype.close;

/** A certificate of a list, with its private key. Of a newer list there are newer ones. */
class Entry {
  #session;
  #listing;
  #place;

  constructor(session, listing, place) {
    this.#session = session;
    this.#listing = listing;
    this.#place = place;
  }

  /** What the certificate says. */
  get fields() {
    return this.#session._fields('fields', this.#number());
  }

  /** The certificate, DER. */
  certificate(pair = Pair.SIGNING) {
    return this.#call('certificate', pair);
  }

  /** Opens the private keys; they stay in the session until it is closed, locks them or lists anew. */
  unlock(password) {
    this.#call('unlock', password);
  }

  /** Wipes the private keys that unlock opened. */
  lock() {
    this.#call('lock');
  }

  /** The unlocked private key, PKCS#8, encrypted with a new password when one is given; fill it with zeros after use. */
  privateKey(newPassword = null, pair = Pair.SIGNING) {
    return this.#call('privateKey', pair, newPassword);
  }

  /** Checks that the holder has this identity number: SigilError 1132 when not. */
  identity(number) {
    this.#call('identity', number);
  }

  /** Signs with the unlocked key. stampUrl: the authority whose time stamp goes into the message. */
  sign(data, form = Form.ATTACHED, stampUrl = null) {
    return this.#call('sign', form, data, stampUrl);
  }

  /** Decrypts a message with the unlocked key. */
  decrypt(message) {
    return this.#call('decrypt', message);
  }

  /** A PKCS#12 file with all unlocked pairs, under this password. */
  export(password, protection = Protection.TRIPLE_DES) {
    return this.#call('exportPairs', protection, password);
  }

  /** Copies the files as they are to the home folder or to a mounted disk's. */
  copy(medium = null, { replace = false } = {}) {
    this.#call('copy', medium, Number(replace));
  }

  /** Deletes the files. The entry stays in the list, and its keys if it is unlocked. */
  delete() {
    this.#call('deleteFiles');
  }

  /** Puts all keys under a new password, in their files. */
  changePassword(oldPassword, newPassword) {
    this.#call('changePassword', oldPassword, newPassword);
  }

  #number() {
    return this.#session._number(this.#listing, this.#place);
  }

  #call(name, ...words) {
    return this.#session._call(name, this.#number(), ...words);
  }
}

module.exports = {
  Cipher, Form, Language, Pair, Protection, Purpose, Session, SigilError, Toolkit, version: native.version,
};
