// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

export const Toolkit: { readonly MAKER: 0; readonly GPKI: 1 };
export const Language: { readonly KOREAN: 1; readonly ENGLISH: 2 };
export const Pair: { readonly SIGNING: 0; readonly KEY_MANAGEMENT: 1 };
export const Form: { readonly ATTACHED: 0; readonly DETACHED: 1; readonly RAW: 2 };
export const Cipher: {
  readonly AES256: 0; readonly AES192: 1; readonly AES128: 2; readonly ARIA256: 3; readonly ARIA192: 4;
  readonly ARIA128: 5; readonly SEED: 6; readonly TRIPLE_DES: 7;
};

export const Protection: { readonly TRIPLE_DES: 0; readonly SEED: 1; readonly AES256: 2 };
export const Purpose: { readonly ANY: 0; readonly SIGN: 1; readonly ENCRYPT: 2 };

/** The version of the library. */
export function version(): string;

/** A function of the library failed. */
export class SigilError extends Error {
  /** One of enum SigilResult of the headers, or a toolkit's own. */
  readonly code: number;
  /** Its name there, for example "SIGIL_WRONG_PASSWORD"; empty for a number without one. */
  readonly codeName: string;
  /** What happened, for a person. */
  readonly sentence: string;
  /** What that person can do. */
  readonly advice: string;
  /** What exactly went wrong; may be empty. */
  readonly detail: string;
}

/** What a certificate says. Texts are empty where it does not say. */
export interface Fields {
  readonly name: string; readonly subject: string; readonly issuer: string; readonly issuerName: string;
  readonly serial: string; readonly use: string; readonly policy: string; readonly policies: string;
  readonly version: string; readonly signatureAlgorithm: string; readonly keyAlgorithm: string;
  readonly keyLength: string; readonly keyUsage: string; readonly alternativeName: string;
  readonly authorityKeyId: string; readonly subjectKeyId: string; readonly revocationList: string;
  readonly authorityAccess: string; readonly certificateFile: string; readonly keyFile: string;
  readonly kmCertificateFile: string; readonly kmKeyFile: string;
  readonly validFrom: Date; readonly validTo: Date; readonly daysLeft: number;
  readonly expired: boolean; readonly expiresSoon: boolean; readonly hasKey: boolean; readonly hasKm: boolean;
  readonly unlocked: boolean;
  /** 1 GPKI, 2 NPKI, 4 MPKI, 8 PPKI; 0 unknown. */
  readonly family: number;
}

/** Who signed a message that was verified. */
export interface Signer {
  /** DER. */
  readonly certificate: Buffer;
  readonly fields: Fields;
  /** When the message says that it was signed. */
  readonly signingTime: Date | null;
  /** The time of its time stamp. */
  readonly stampTime: Date | null;
  /** The result of verifying the time stamp; 0 also when there is none. */
  readonly stampCode: number;
}

/** Which certificates to list; without any, all of the home folder. */
export interface Filter {
  /** A mounted disk's folder instead of the home folder. */
  medium?: string;
  issuer?: string; policy?: string; subject?: string; serial?: string;
  families?: number; expiresWithin?: number; valid?: boolean; expired?: boolean;
}

/** What the dialog lists; without any, everything. */
export interface PickFilter {
  /** OIDs, dotted. */
  policies?: string[];
  subject?: string; serial?: string; families?: number;
  /** Those with a key-management pair. */
  withKm?: boolean;
  /** Expired ones are not shown, or cannot be chosen. */
  noExpired?: boolean; lockExpired?: boolean;
}

/** Whether a certificate is revoked. */
export interface Status {
  readonly revoked: boolean;
  /** A revocation list says so; else a responder. */
  readonly byList: boolean;
  readonly revokedAt: Date | null;
}

/** What a time stamp says; the policy is an OID, the serial number hexadecimal. */
export interface Stamp { readonly time: Date; readonly policy: string; readonly serial: string }

/** A token (PKCS#11) and the certificates on it, DER. */
export interface Token {
  readonly slot: number; readonly initialised: boolean; readonly label: string; readonly maker: string;
  readonly model: string; readonly serial: string; readonly certificates: Buffer[];
}

/** What stands at one place, and why it is listed or not: the name of the rule, what there is to say, how to mend it. */
export interface Finding {
  readonly listed: boolean; readonly path: string; readonly rule: string; readonly detail: string; readonly mend: string;
}

export class Session {
  constructor(options?: { folder?: string | null; toolkit?: number; language?: number });
  close(): void;
  list(filter?: Filter): Entry[];
  verify(message: Uint8Array, data?: Uint8Array | null): { content: Buffer; signers: Signer[] };
  verifyRaw(certificate: Uint8Array, data: Uint8Array, signature: Uint8Array): void;
  encrypt(recipients: Uint8Array[], data: Uint8Array, cipher?: number): Buffer;
  fields(certificate: Uint8Array): Fields;
  /** Null when the user gave up. */
  pick(filter?: PickFilter): Entry | null;
  lock(): void;
  importPairs(pkcs12: Uint8Array, password: string, medium?: string | null, options?: { replace?: boolean }): void;
  verifyCertificate(certificate: Uint8Array,
    options?: { trusted?: Uint8Array[]; purpose?: number; time?: Date | null; revocation?: boolean }): void;
  status(certificate: Uint8Array, options?: { trusted?: Uint8Array[]; responder?: string | null }): Status;
  timestamp(url: string, data: Uint8Array): Buffer;
  stamp(token: Uint8Array, data: Uint8Array): Stamp;
  tokens(): Token[];
  examine(medium?: string | null): Finding[];
}

export interface Entry {
  readonly fields: Fields;
  certificate(pair?: number): Buffer;
  unlock(password: string): void;
  lock(): void;
  privateKey(newPassword?: string | null, pair?: number): Buffer;
  identity(number: string): void;
  sign(data: Uint8Array, form?: number, stampUrl?: string | null): Buffer;
  decrypt(message: Uint8Array): Buffer;
  export(password: string, protection?: number): Buffer;
  copy(medium?: string | null, options?: { replace?: boolean }): void;
  delete(): void;
  changePassword(oldPassword: string, newPassword: string): void;
}
