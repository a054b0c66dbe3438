# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

# make_disk FOLDER: a disk with one NPKI certificate, issued by nobody, whose password is in FOLDER/password.
make_disk() {
    pair="$1/NPKI/yessign/USER/cn=Package test,ou=tests,o=yessign,c=kr"
    mkdir -p "$pair"
    (umask 077 && echo 'package-Test1!' >"$1/password")
    openssl req -x509 -newkey rsa:2048 -nodes -sha256 -days 2 -subj '/C=kr/O=yessign/OU=tests/CN=Package test' \
        -addext keyUsage=critical,digitalSignature,nonRepudiation,keyEncipherment \
        -keyout "$1/key.pem" -outform DER -out "$pair/signCert.der" 2>/dev/null
    openssl pkcs8 -topk8 -v2 aes-256-cbc -in "$1/key.pem" -outform DER -out "$pair/signPri.key" -passout "file:$1/password"
    openssl x509 -inform DER -in "$pair/signCert.der" -out "$1/root.pem"
}
