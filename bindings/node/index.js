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
const BAD_ARGUMENT = 1001;

/** A function of the library failed. */
class SigilError extends Error {
  constructor(code, language, detail) {
    const { name, sentence, advice } = native.describe(code, language);
    super(`${code}: ${sentence} ${advice}`.trim());
    this.name = 'SigilError';
    Object.assign(this, { code, codeName: name, sentence, advice, detail });
  }
}

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
    return Array.from({ length: count }, (_, number) => new Entry(this, this.#listing, number));
  }

  /** Verifies a signed message, a detached one over the data: { content, signers }. */
  verify(message, data = null) {
    const { content, signers } = this._call('verify', message, data);
    return { content, signers: Array.from({ length: signers }, (_, index) => this.#signer(index)) };
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

  /** Signs with the unlocked key. */
  sign(data, form = Form.ATTACHED) {
    return this.#call('sign', form, data);
  }

  /** Decrypts a message with the unlocked key. */
  decrypt(message) {
    return this.#call('decrypt', message);
  }

  #number() {
    return this.#session._number(this.#listing, this.#place);
  }

  #call(name, ...words) {
    return this.#session._call(name, this.#number(), ...words);
  }
}

module.exports = { Cipher, Form, Language, Pair, Session, SigilError, Toolkit, version: native.version };
