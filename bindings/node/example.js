// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Lists, unlocks, signs, verifies and decrypts: example.js FOLDER_OF_A_DISK PASSWORD.

'use strict';

const { Session } = require('./index.js');

const [medium, password] = process.argv.slice(2);
const session = new Session();
const entries = session.list({ medium, valid: true });
for (const { fields } of entries) console.log(`${fields.name}: ${fields.daysLeft} days left`);
const mine = entries[0];
mine.unlock(password);
const signed = mine.sign(Buffer.from('계약서'));
const { content, signers } = session.verify(signed);
console.log(`${content}: signed by ${signers[0].fields.name}`);
const secret = session.encrypt([mine.certificate()], Buffer.from('비밀'));
console.log(`${mine.decrypt(secret)}: decrypted`);
session.close();
