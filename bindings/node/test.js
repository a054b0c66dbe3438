// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// The module over a store whose names and password are Korean. Where it is, the environment says.

'use strict';

const assert = require('node:assert');
const { Cipher, Form, Language, Session, SigilError, version } = require('./index.js');

const { SIGIL_TEST_FOLDER: folder, SIGIL_TEST_STORE: medium, SIGIL_TEST_PASSWORD: password, SIGIL_TEST_NAME: name } =
  process.env;
const contract = Buffer.from('계약서');
const other = Buffer.from('다른 글');

function withEntry(step, language = Language.ENGLISH) {
  const session = new Session({ folder, language });
  try {
    step(session.list({ medium })[0], session);
  } finally {
    session.close();
  }
}

/** The step fails with this code. */
function refused(code, step) {
  assert.throws(step, (failure) => failure instanceof SigilError && failure.code === code);
}

const tests = {
  'a Korean name comes out as it is': () => withEntry(({ fields }) => {
    assert.strictEqual(fields.name, name);
    assert.deepStrictEqual([fields.family, fields.hasKey, fields.unlocked, fields.expired], [2, true, false, false]);
    assert.ok(fields.validFrom < new Date() && new Date() < fields.validTo);
    assert.match(fields.certificateFile, /signCert\.der$/);
    assert.match(fields.keyFile, /signPri\.key$/);
  }),
  'a wrong password has its code and words': () => {
    for (const [language, word] of [[Language.ENGLISH, 'password'], [Language.KOREAN, '비밀번호']]) {
      withEntry((entry) => assert.throws(() => entry.unlock('틀린 비밀번호'), (failure) => {
        assert.deepStrictEqual([failure.code, failure.codeName], [1113, 'SIGIL_WRONG_PASSWORD']);
        assert.ok(failure.sentence.includes(word) && failure.advice.length > 0, failure.message);
        return true;
      }), language);
    }
  },
  'a detached signature covers its data alone': () => withEntry((entry, session) => {
    entry.unlock(password);
    const signed = entry.sign(contract, Form.DETACHED);
    const { signers } = session.verify(signed, contract);
    assert.strictEqual(signers[0].fields.name, name);
    assert.deepStrictEqual(signers[0].certificate, entry.certificate());
    assert.throws(() => session.verify(signed, other), SigilError);
  }),
  'a signature value verifies': () => withEntry((entry, session) => {
    entry.unlock(password);
    const value = entry.sign(contract, Form.RAW);
    session.verifyRaw(entry.certificate(), contract, value);
    assert.throws(() => session.verifyRaw(entry.certificate(), other, value), SigilError);
  }),
  'a locked entry decrypts nothing': () => withEntry((entry, session) => {
    const message = session.encrypt([entry.certificate()], contract, Cipher.SEED);
    entry.unlock(password);
    assert.deepStrictEqual(entry.decrypt(message), contract);
    assert.ok(entry.privateKey().length > 0);
    entry.lock();
    assert.throws(() => entry.decrypt(message), SigilError);
  }),
  'a closed session is refused': () => {
    const session = new Session({ folder });
    const entry = session.list({ medium })[0];
    session.close();
    session.close();
    refused(1008, () => entry.fields);
    refused(1008, () => entry.unlock(password));
    refused(1008, () => entry.sign(contract));
    refused(1008, () => session.list({ medium }));
    refused(1008, () => session.verify(contract));
  },
  'an entry of an older list is refused': () => withEntry((older, session) => {
    const newer = session.list({ medium })[0];
    refused(1001, () => older.fields);
    assert.strictEqual(newer.fields.name, name);
  }),
  'what is no text or no bytes is refused': () => withEntry((entry, session) => {
    assert.throws(() => entry.unlock(`${password}\0`), /zero character/);
    assert.throws(() => entry.unlock(7), TypeError);
    assert.throws(() => session.verify('text'), TypeError);
    assert.throws(() => session.encrypt([7], contract), TypeError);
    assert.throws(() => session.encrypt(null, contract), TypeError);
  }),
  'a folder without a library is no session': () => {
    assert.throws(() => new Session({ folder: '/no/such/folder' }), (failure) => failure.sentence.length > 0);
  },
  'the version is told': () => assert.match(version(), /^\d+\.\d+\.\d+$/),
};

for (const [title, test] of Object.entries(tests)) {
  test();
  console.log(`passed: ${title}`);
}
