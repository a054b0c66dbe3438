# SPDX-FileCopyrightText: The SigilDesk authors
# SPDX-License-Identifier: LicenseRef-SigilDesk

"""verify, status and timestamp, against an authority of the test whose servers answer on the loopback address."""

import http.server
import os
import re
import shutil
import subprocess
import threading

import shapes
from command import DONE, FAILED, NO, WRONG_USE, CommandTest, main
from terminal import Terminal

CONFIG = """
[req]
distinguished_name = name
[name]
[ca]
default_ca = authority
[authority]
dir = {folder}
database = {folder}/index.txt
serial = {folder}/serial
new_certs_dir = {folder}
default_md = sha256
policy = anything
unique_subject = no
default_crl_days = 30
[anything]
commonName = supplied
[root]
basicConstraints = critical, CA:TRUE
keyUsage = critical, keyCertSign, cRLSign
subjectKeyIdentifier = hash
[authority_certificate]
basicConstraints = critical, CA:TRUE
keyUsage = critical, keyCertSign, cRLSign
subjectKeyIdentifier = hash
authorityKeyIdentifier = keyid
crlDistributionPoints = URI:{base}/root.crl
[user]
keyUsage = critical, digitalSignature, nonRepudiation
subjectKeyIdentifier = hash
authorityKeyIdentifier = keyid
crlDistributionPoints = URI:{base}/issuer.crl
authorityInfoAccess = OCSP;URI:{base}/ocsp, caIssuers;URI:{base}/issuer.der
certificatePolicies = 1.2.410.200004.5.1.1.5
[stamps]
keyUsage = critical, digitalSignature
extendedKeyUsage = critical, timeStamping
[tsa]
default_tsa = service
[service]
serial = {folder}/tsaserial
signer_digest = sha256
default_policy = 1.2.3.4
digests = sha256
accuracy = secs:1
"""


class Servers:
    """One web server with everything: certificates, lists, a responder, a time-stamping authority."""

    def __init__(self, test):
        servers = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                self.reply(servers.files.get(self.path.replace("%20", " ")))

            def do_POST(self):
                body = self.rfile.read(int(self.headers["Content-Length"]))
                servers.answering.wait()
                self.reply(test.ocsp(body) if self.path == "/ocsp" else test.stamp(body) if self.path == "/tsa" else None)

            def reply(self, body):
                servers.asked.append(self.path)
                self.send_response(200 if body else 404)
                self.send_header("Content-Length", str(len(body or b"")))
                self.end_headers()
                self.wfile.write(body or b"")

            def log_message(self, *arguments):
                pass

        self.files, self.asked = {}, []
        self.answering = threading.Event()
        self.answering.set()
        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.base = f"http://127.0.0.1:{self.server.server_address[1]}"
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def close(self):
        self.server.shutdown()
        self.server.server_close()


class TrustTest(CommandTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.servers = Servers(cls)
        cls.addClassCleanup(cls.servers.close)
        cls.config = cls.work / "openssl.cnf"
        cls.config.write_text(CONFIG.format(folder=cls.work, base=cls.servers.base))
        for name, content in (("index.txt", ""), ("serial", "1000"), ("tsaserial", "01")):
            (cls.work / name).write_text(content)
        cls.issue("root", "/C=KR/O=Test/CN=Test-RootCA", "root")
        cls.issue("issuer", "/C=KR/O=Test/CN=TestCA", "authority_certificate", "root")
        cls.user = cls.issue("user", "/C=KR/O=yessign/CN=User", "user", "issuer")
        cls.revoked = cls.issue("revoked", "/C=KR/O=yessign/CN=Revoked", "user", "issuer")
        cls.issue("tsa", "/C=KR/O=Test/CN=Stamps", "stamps", "issuer")
        cls.run_openssl("ca", "-config", cls.config, "-revoke", "revoked.pem", "-keyfile", "issuer.key", "-cert", "issuer.pem")
        with open(cls.work / "index.txt", "a", encoding="ascii") as index:
            index.write(f"V\t491231235959Z\t\t{cls.serial('user')}\tunknown\t/CN=User\n")
        for name in ("issuer", "root"):
            if name == "root":
                (cls.work / "index.txt").rename(cls.work / "index.issuer")
                (cls.work / "index.txt").write_text("")
            cls.run_openssl("ca", "-config", cls.config, "-gencrl", "-keyfile", f"{name}.key", "-cert", f"{name}.pem", "-out",
                            f"{name}.crl.pem")
            cls.servers.files[f"/{name}.crl"] = cls.run_openssl("crl", "-in", f"{name}.crl.pem", "-outform", "DER")
            cls.servers.files[f"/{name}.der"] = cls.run_openssl("x509", "-in", f"{name}.pem", "-outform", "DER")
        (cls.work / "index.issuer").rename(cls.work / "index.txt")
        cls.all_files = dict(cls.servers.files)

    def setUp(self):
        self.servers.files = dict(self.all_files)
        self.servers.asked.clear()

    @classmethod
    def run_openssl(cls, *arguments):
        return subprocess.run(["openssl", *map(str, arguments)], check=True, capture_output=True, cwd=cls.work).stdout

    @classmethod
    def serial(cls, name):
        return cls.run_openssl("x509", "-in", f"{name}.pem", "-noout", "-serial").decode().strip().split("=")[1]

    @classmethod
    def issue(cls, name, subject, extensions, issuer=None):
        """A certificate with its key; the path of its DER file."""
        cls.run_openssl("req", "-new", "-newkey", "rsa:2048", "-nodes", "-keyout", f"{name}.key", "-subj", subject, "-config",
                        cls.config, "-out", f"{name}.csr")
        signer = ["-CA", f"{issuer}.pem", "-CAkey", f"{issuer}.key"] if issuer else ["-signkey", f"{name}.key"]
        cls.run_openssl("x509", "-req", "-in", f"{name}.csr", "-days", "3650", "-extfile", cls.config, "-extensions", extensions,
                        "-out", f"{name}.pem", *signer)
        der = cls.work / f"{name}.der"
        der.write_bytes(cls.run_openssl("x509", "-in", f"{name}.pem", "-outform", "DER"))
        return der

    @classmethod
    def answer_of(cls, arguments, body):
        folder = cls.work / f"request{threading.get_ident()}"
        folder.mkdir(exist_ok=True)
        request, response = folder / "in", folder / "out"
        request.write_bytes(body)
        cls.run_openssl(*arguments(request), response)
        return response.read_bytes()

    @classmethod
    def ocsp(cls, body):
        return cls.answer_of(lambda request: ["ocsp", "-index", "index.txt", "-rsigner", "issuer.pem", "-rkey", "issuer.key", "-CA",
                                              "issuer.pem", "-reqin", request, "-ndays", "1", "-respout"], body)

    @classmethod
    def stamp(cls, body):
        return cls.answer_of(lambda request: ["ts", "-reply", "-config", cls.config, "-section", "service", "-queryfile", request,
                                              "-signer", "tsa.pem", "-inkey", "tsa.key", "-chain", "issuer.pem", "-out"], body)

    def steps(self, *arguments, status=DONE):
        document = self.json("verify", *arguments, status=status)
        self.assertEqual(document["valid"], status == DONE)
        return {step["step"]: step["ok"] for step in document["steps"]}

    # -- verify ----------------------------------------------------------------------------------------------------

    def test_valid(self):
        for toolkit in ("maker", "gpki"):
            self.assertEqual(self.steps(self.user, "--trust", "root.pem", "--toolkit", toolkit),
                             {"path": True, "validity": True, "policies": True, "revocation": True})
        self.assertIn("/issuer.crl", self.servers.asked)

    def test_revoked(self):
        steps = self.steps(self.revoked, "--trust", "root.pem", status=NO)
        self.assertEqual(steps, {"path": True, "validity": True, "policies": True, "revocation": False})
        self.assertTrue(self.steps(self.revoked, "--trust", "root.pem", "--no-revocation")["path"])

    def test_no_list(self):
        del self.servers.files["/issuer.crl"]
        self.assertFalse(self.steps(self.user, "--trust", "root.pem", status=NO)["revocation"])

    def test_time(self):
        for time in ("2100-01-01", "2100-01-01T00:00:00+09:00", "1999-01-01"):
            steps = self.steps(self.user, "--trust", "root.pem", "--no-revocation", "--time", time, status=NO)
            self.assertEqual((steps["path"], steps["validity"]), (True, False))
        for time in ("soon", "2026-01-31x"):
            self.assertEqual(self.error("verify", self.user, "--time", time, status=WRONG_USE)["name"], "wrong_use")

    def test_purpose(self):
        arguments = [self.user, "--trust", "root.pem", "--no-revocation", "--purpose"]
        self.assertTrue(self.steps(*arguments, "sign")["purpose"])
        self.assertTrue(self.steps(*arguments, "any")["purpose"])
        self.assertFalse(self.steps(*arguments, "encrypt", status=NO)["purpose"])

    def test_only_the_given_are_trusted(self):
        self.openssl("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", "/dev/null", "-subj", "/CN=other", "-out",
                     "stranger.pem")
        self.assertFalse(self.steps(self.user, "--trust", "stranger.pem", "--no-revocation", status=NO)["path"])
        self.assertFalse(self.steps(self.user, "--no-revocation", status=NO)["path"])
        self.assertEqual(self.error("verify", self.user, "--trust", "/no/such", status=FAILED)["name"], "not_found")

    def test_roots_of_the_settings_file(self):
        folder = self.work / "folder"
        folder.mkdir()
        installed = self.answer("--help").rsplit("Library folder: ", 1)[1].strip()
        for name in os.listdir(installed):
            if name != "HVCToolkitV30.conf":
                (folder / name).symlink_to(os.path.join(installed, name))
        root = "cn=Test-RootCA,o=Test,c=KR"
        (folder / "HVCToolkitV30.conf").write_text(
            f"[VALIDATOIN_OPTION]\nCA_INFO_COUNT = 1\n[CA_INFO1]\nCA_DN = {root}\nDIR_URL = {self.servers.base}\n")
        self.servers.files["/" + root] = self.servers.files["/root.der"]
        self.assertTrue(all(self.steps(self.user, "--folder", folder).values()))
        self.assertFalse(self.steps(self.user, "--folder", folder, "--trust", "user.pem", "--time", "2100-01-01", status=NO)["validity"])

    def test_the_network_is_used_when_it_is_needed_alone(self):
        (self.work / "both.pem").write_bytes((self.work / "root.pem").read_bytes() + (self.work / "issuer.pem").read_bytes())
        self.steps(self.user, "--trust", "both.pem", "--no-revocation")
        self.answer("show", self.user)
        self.answer("encrypt", "index.txt", "--to", self.user, "--out", "quiet.p7e")
        self.assertEqual(self.servers.asked, [])
        self.steps(self.user, "--trust", "root.pem", "--no-revocation")
        self.assertEqual(self.servers.asked, ["/issuer.der"])

    def test_each_step_on_a_line(self):
        lines = self.answer("verify", self.user, "--trust", "root.pem").splitlines()
        self.assertEqual([line.split()[0] for line in lines], ["path", "validity", "policies", "revocation"])

    # -- status ----------------------------------------------------------------------------------------------------

    def test_status(self):
        for toolkit in ("maker", "gpki"):
            for certificate, state, status in ((self.user, "good", DONE), (self.revoked, "revoked", NO)):
                for trust in (["--trust", "issuer.pem"], []):
                    document = self.json("status", certificate, *trust, "--toolkit", toolkit, status=status)
                    self.assertEqual((document["valid"], document["status"]), (state == "good", state))
                    self.assertEqual(document["steps"][-1]["step"], "ocsp")

    def test_the_list_tells_when_no_responder_does(self):
        for certificate, state, status in ((self.user, "good", DONE), (self.revoked, "revoked", NO)):
            document = self.json("status", certificate, "--url", self.servers.base + "/nothing", status=status)
            self.assertEqual(document["status"], state)
            self.assertEqual([step["step"] for step in document["steps"]], ["issuer", "ocsp", "crl"])

    def test_nobody_tells(self):
        self.servers.files.clear()
        error = self.error("status", self.user, "--url", self.servers.base + "/nothing", "--trust", "issuer.pem", status=FAILED)
        self.assertEqual((error["name"], [step["ok"] for step in error["steps"]]), ("no_status", [True, False, False]))
        error = self.error("status", self.user, status=FAILED)
        self.assertEqual([step["step"] for step in error["steps"]], ["issuer"])
        process = self.run_command("status", self.user)
        self.assertEqual(process.returncode, FAILED)
        self.assertRegex(process.stdout, "^issuer +NOT ok")
        self.assertEqual(process.stderr, "sigildesk: the state of User cannot be told\n")

    # -- the examples of the manual page, but for the port of the servers --------------------------------------------

    def test_examples(self):
        pair = self.home / "NPKI" / "yessign" / "USER" / "cn=User"
        pair.mkdir(parents=True)
        self.addCleanup(shutil.rmtree, self.home / "NPKI")
        shutil.copy(self.user, pair / "signCert.der")
        shutil.copy(self.work / "user.key", pair / "signPri.key")
        shutil.copy(self.work / "issuer.pem", self.work / "authorities.pem")
        (self.work / "contract.txt").write_text("a contract")
        page = self.answer("manual")
        for command, path in (("status", "/ocsp"), ("timestamp", "/tsa")):
            example, = re.findall(f"^  (sigildesk {command} .*)$", self.answer(command, "--help"), re.MULTILINE)
            words = re.sub(r"http://127\.0\.0\.1:\d+/", self.servers.base + path, example).split()[1:]
            self.assertIn(example, page.replace("\\-", "-"))
            self.answer(*words)
            shapes.check(page, command, self.json(*words, *(["--force"] if command == "timestamp" else [])))

    # -- timestamp -------------------------------------------------------------------------------------------------

    def test_token_is_read_by_openssl(self):
        text = self.work / "text.txt"
        text.write_text("a text")
        (self.work / "chain.pem").write_bytes((self.work / "root.pem").read_bytes() + (self.work / "issuer.pem").read_bytes())
        for toolkit in ("maker", "gpki"):
            answer = self.json("timestamp", text, "--url", self.servers.base + "/tsa", "--toolkit", toolkit, "--force")
            self.assertEqual((answer["file"], answer["policy"]), (str(text) + ".tst", "1.2.3.4"))
            self.assertRegex(answer["time"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\+09:00$")
            self.openssl("ts", "-verify", "-token_in", "-in", answer["file"], "-data", text, "-CAfile", "chain.pem")

    def test_progress_goes_before_the_result_comes(self):
        self.servers.answering.clear()
        self.addCleanup(self.servers.answering.set)
        terminal = Terminal(self, "timestamp", self.user, "--url", self.servers.base + "/tsa", "--out", "late.tst")
        terminal.wait_for("Waiting for the time-stamping authority ...")
        self.servers.answering.set()
        status, seen = terminal.end()
        self.assertEqual(status, DONE)
        self.assertRegex(seen, r"^\r +\rlate.tst  ")

    def test_stamped_message(self):
        folder = self.work / "pair"
        folder.mkdir()
        (folder / "signCert.der").write_bytes(self.user.read_bytes())
        self.openssl("pkcs8", "-topk8", "-in", "user.key", "-v2", "aes-256-cbc", "-passout", "pass:Pass1!", "-outform", "DER",
                     "-out", folder / "signPri.key")
        password = self.work / "password"
        password.write_text("Pass1!")
        password.chmod(0o600)
        text = self.work / "stamped.txt"
        text.write_text("a text")
        page = self.answer("manual")
        for form, how in (("--attached", ["stamped.txt.p7m"]), ("--detached", ["stamped.txt", "--signature", "stamped.txt.p7s"])):
            self.answer("sign", folder, text, form, "--timestamp", self.servers.base + "/tsa", "--password-file", password)
            document = self.json("verify-file", *how)
            self.assertEqual([(step["step"], step["ok"]) for step in document["steps"]],
                             [("signature", True), ("signer", True), ("timestamp", True)])
            self.assertTrue(document["signers"][0]["timestamp"])
            shapes.check(page, "verify-file", document)
        forged = re.sub(rb"\x18\x0f\d{14}Z", b"\x18\x0f20200101000000Z", (self.work / "stamped.txt.p7m").read_bytes())
        (self.work / "forged.p7m").write_bytes(forged)
        steps = {step["step"]: step for step in self.json("verify-file", "forged.p7m", status=NO)["steps"]}
        self.assertEqual([(name, step["ok"]) for name, step in steps.items()],
                         [("signature", True), ("signer", True), ("timestamp", False)])
        self.assertNotIn("2020", steps["timestamp"]["detail"])

    def test_timestamp_needs_an_address(self):
        self.assertEqual(self.error("timestamp", self.user, status=WRONG_USE)["name"], "wrong_use")
        self.assertEqual(self.error("timestamp", self.user, "--url", self.servers.base + "/nothing", status=FAILED)["code"], 3602)


main()
