// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// A certification authority by Bouncy Castle: CmpAuthority PORT CERTIFICATE KEY SECRET
//
// It issues what it is asked for to whoever knows the secret or has a certificate of its own, and revokes it. The path of the
// address tells how it behaves: "/wait/N" lets the user ask again after N seconds, "/signed" answers a secret with a signature,
// "/delegate" signs with a certificate that it issued to itself, "/signing-only" refuses a second request, and "/refuse", "/silent-refuse" (without protection), "/subject",
// "/key", "/secret", "/transaction", "/nonce", "/bare", "/two", "/body" are wrong in one thing each.

import com.sun.net.httpserver.HttpExchange;
import com.sun.net.httpserver.HttpServer;
import java.math.BigInteger;
import java.net.InetAddress;
import java.net.InetSocketAddress;
import java.nio.file.Files;
import java.nio.file.Path;
import java.security.KeyFactory;
import java.security.KeyPair;
import java.security.KeyPairGenerator;
import java.security.PrivateKey;
import java.security.Security;
import java.security.spec.PKCS8EncodedKeySpec;
import java.util.Date;
import java.util.HashMap;
import java.util.Map;
import org.bouncycastle.asn1.ASN1Encodable;
import org.bouncycastle.asn1.ASN1Integer;
import org.bouncycastle.asn1.ASN1OctetString;
import org.bouncycastle.asn1.DERUTF8String;
import org.bouncycastle.asn1.cmp.*;
import org.bouncycastle.asn1.crmf.CertReqMessages;
import org.bouncycastle.asn1.crmf.CertTemplate;
import org.bouncycastle.asn1.pkcs.PrivateKeyInfo;
import org.bouncycastle.asn1.x500.X500Name;
import org.bouncycastle.asn1.x509.Extension;
import org.bouncycastle.asn1.x509.GeneralName;
import org.bouncycastle.asn1.x509.SubjectPublicKeyInfo;
import org.bouncycastle.cert.X509CertificateHolder;
import org.bouncycastle.cert.X509v3CertificateBuilder;
import org.bouncycastle.cert.cmp.CertificateConfirmationContent;
import org.bouncycastle.cert.cmp.GeneralPKIMessage;
import org.bouncycastle.cert.cmp.ProtectedPKIMessage;
import org.bouncycastle.cert.cmp.ProtectedPKIMessageBuilder;
import org.bouncycastle.cert.crmf.CertificateRequestMessage;
import org.bouncycastle.cert.crmf.PKMACBuilder;
import org.bouncycastle.cert.crmf.jcajce.JcePKMACValuesCalculator;
import org.bouncycastle.jce.provider.BouncyCastleProvider;
import org.bouncycastle.operator.ContentSigner;
import org.bouncycastle.operator.jcajce.JcaContentSignerBuilder;
import org.bouncycastle.operator.jcajce.JcaContentVerifierProviderBuilder;
import org.bouncycastle.operator.jcajce.JcaDigestCalculatorProviderBuilder;

public class CmpAuthority {
    static final String SCHEME = "SHA256withECDSA";

    static X509CertificateHolder own;
    static PrivateKey key;
    static String secret;
    static X509CertificateHolder delegate;
    static PrivateKey delegateKey;
    static long serial = 5000;
    /** Certificates that are not confirmed yet, and requests that wait, by transaction. */
    static final Map<String, X509CertificateHolder> pending = new HashMap<>();
    static final Map<String, PKIMessage> waiting = new HashMap<>();

    /** One message and how it is to be answered. */
    record Question(String manner, PKIMessage message, boolean withSecret) {
        PKIHeader header() { return message.getHeader(); }
        String transaction() { return header().getTransactionID().toString(); }
        boolean is(String name) { return manner.equals(name); }
    }

    public static void main(String[] arguments) throws Exception {
        Security.addProvider(new BouncyCastleProvider());
        own = new X509CertificateHolder(Files.readAllBytes(Path.of(arguments[1])));
        key = KeyFactory.getInstance("EC").generatePrivate(
            new PKCS8EncodedKeySpec(Files.readAllBytes(Path.of(arguments[2]))));
        secret = arguments[3];
        KeyPair pair = freshKey();
        delegate = issue(new X500Name("CN=Delegate"), SubjectPublicKeyInfo.getInstance(pair.getPublic().getEncoded()), null);
        delegateKey = pair.getPrivate();
        HttpServer server = HttpServer.create(
            new InetSocketAddress(InetAddress.getLoopbackAddress(), Integer.parseInt(arguments[0])), 0);
        server.createContext("/", CmpAuthority::handle);
        server.start();
    }

    static void handle(HttpExchange exchange) throws java.io.IOException {
        byte[] reply;
        int status = 200;
        try {
            reply = answer(exchange.getRequestURI().getPath(), exchange.getRequestBody().readAllBytes());
        } catch (Exception failure) {
            failure.printStackTrace();
            reply = failure.toString().getBytes();
            status = 500;
        }
        exchange.sendResponseHeaders(status, reply.length);
        exchange.getResponseBody().write(reply);
        exchange.close();
    }

    static byte[] answer(String path, byte[] bytes) throws Exception {
        GeneralPKIMessage general = new GeneralPKIMessage(bytes);
        ProtectedPKIMessage message = new ProtectedPKIMessage(general);
        Question question =
            new Question(path.substring(1), general.toASN1Structure(), message.hasPasswordBasedMacProtection());
        boolean known = question.withSecret
            ? message.verify(new PKMACBuilder(new JcePKMACValuesCalculator().setProvider("BC")), secret.toCharArray())
            : isOurs(message.getCertificates()[0])
                && message.verify(verifier(message.getCertificates()[0].getSubjectPublicKeyInfo()));
        if (!known || question.is("silent-refuse"))
            return plain(question, refusal(PKIFailureInfo.badMessageCheck, "who are you"));
        if (question.is("refuse"))
            return protect(question, refusal(PKIFailureInfo.badTime, "not today"));
        if (question.is("signing-only") && general.getBody().getType() == PKIBody.TYPE_CERT_REQ)
            return protect(question, refusal(PKIFailureInfo.badRequest, "one is enough"));
        PKIBody body = reply(question);
        return question.is("bare") ? plain(question, body) : protect(question, body);
    }

    static boolean isOurs(X509CertificateHolder certificate) throws Exception {
        return certificate.isSignatureValid(verifier(own.getSubjectPublicKeyInfo()));
    }

    static org.bouncycastle.operator.ContentVerifierProvider verifier(SubjectPublicKeyInfo info) throws Exception {
        return new JcaContentVerifierProviderBuilder().setProvider("BC").build(info);
    }

    static PKIBody refusal(int why, String words) {
        return new PKIBody(PKIBody.TYPE_ERROR, new ErrorMsgContent(new PKIStatusInfo(
            PKIStatus.rejection, new PKIFreeText(new DERUTF8String(words)), new PKIFailureInfo(why))));
    }

    static PKIBody reply(Question question) throws Exception {
        PKIBody body = question.message.getBody();
        switch (body.getType()) {
        case PKIBody.TYPE_INIT_REQ:
        case PKIBody.TYPE_CERT_REQ:
        case PKIBody.TYPE_KEY_UPDATE_REQ:
            if (question.manner.startsWith("wait/")) {
                waiting.put(question.transaction(), question.message);
                return response(body.getType() + 1, new PKIStatusInfo(PKIStatus.waiting), null);
            }
            return granted(question, body);
        case PKIBody.TYPE_POLL_REQ:
            return polled(question);
        case PKIBody.TYPE_CERT_CONFIRM:
            return confirmed(question, body);
        case PKIBody.TYPE_REVOCATION_REQ:
            return new PKIBody(PKIBody.TYPE_REVOCATION_REP,
                new RevRepContentBuilder().add(new PKIStatusInfo(PKIStatus.granted)).build());
        default:
            return refusal(PKIFailureInfo.badRequest, "unknown");
        }
    }

    /** The first time it tells to wait, the second time the certificate is ready. */
    static PKIBody polled(Question question) throws Exception {
        PKIMessage asked = waiting.get(question.transaction());
        if (pending.putIfAbsent("polled " + question.transaction(), own) == null)
            return new PKIBody(PKIBody.TYPE_POLL_REP, new PollRepContent(new ASN1Integer(0),
                new ASN1Integer(new BigInteger(question.manner.substring("wait/".length())))));
        return granted(question, asked.getBody());
    }

    static PKIBody confirmed(Question question, PKIBody body) throws Exception {
        CertificateConfirmationContent content =
            new CertificateConfirmationContent((CertConfirmContent) body.getContent());
        boolean right = content.getStatusMessages()[0].isVerified(
            pending.remove(question.transaction()), new JcaDigestCalculatorProviderBuilder().build());
        return right ? new PKIBody(PKIBody.TYPE_CONFIRM, new PKIConfirmContent())
                     : refusal(PKIFailureInfo.badCertId, "not what was issued");
    }

    static PKIBody granted(Question question, PKIBody body) throws Exception {
        CertificateRequestMessage request =
            new CertificateRequestMessage(((CertReqMessages) body.getContent()).toCertReqMsgArray()[0]);
        CertTemplate template = request.getCertTemplate();
        if (!request.isValidSigningKeyPOP(verifier(template.getPublicKey())))
            return refusal(PKIFailureInfo.badPOP, "prove it");
        X500Name subject = question.is("subject") ? new X500Name("CN=Somebody else") : template.getSubject();
        SubjectPublicKeyInfo info = question.is("key")
            ? SubjectPublicKeyInfo.getInstance(freshKey().getPublic().getEncoded()) : template.getPublicKey();
        Extension usage = template.getExtensions() == null ? null : template.getExtensions().getExtension(Extension.keyUsage);
        X509CertificateHolder certificate = issue(subject, info, usage);
        pending.put(question.transaction(), certificate);
        int type = question.is("body") ? PKIBody.TYPE_REVOCATION_REP : body.getType() + 1;
        if (question.is("body"))
            return new PKIBody(type, new RevRepContentBuilder().add(new PKIStatusInfo(PKIStatus.granted)).build());
        return response(type, new PKIStatusInfo(PKIStatus.granted), certificate, question.is("two") ? 2 : 1);
    }

    static PKIBody response(int type, PKIStatusInfo status, X509CertificateHolder certificate) {
        return response(type, status, certificate, 1);
    }

    static PKIBody response(int type, PKIStatusInfo status, X509CertificateHolder certificate, int count) {
        CertifiedKeyPair pair = certificate == null ? null
            : new CertifiedKeyPair(new CertOrEncCert(new CMPCertificate(certificate.toASN1Structure())));
        CertResponse[] responses = new CertResponse[count];
        for (int i = 0; i < count; ++i)
            responses[i] = new CertResponse(new ASN1Integer(i), status, pair, null);
        CMPCertificate[] authorities = {new CMPCertificate(own.toASN1Structure())};
        return new PKIBody(type, new CertRepMessage(type == PKIBody.TYPE_INIT_REP ? authorities : null, responses));
    }

    static X509CertificateHolder issue(X500Name subject, SubjectPublicKeyInfo info, Extension usage) throws Exception {
        Date now = new Date();
        X509v3CertificateBuilder builder = new X509v3CertificateBuilder(own.getSubject(), BigInteger.valueOf(serial++),
            new Date(now.getTime() - 60_000), new Date(now.getTime() + 86_400_000), subject, info);
        if (usage != null)
            builder.addExtension(usage);
        return builder.build(signer(key));
    }

    static ContentSigner signer(PrivateKey with) throws Exception { return new JcaContentSignerBuilder(SCHEME).build(with); }

    static KeyPair freshKey() throws Exception {
        KeyPairGenerator generator = KeyPairGenerator.getInstance("EC");
        generator.initialize(256);
        return generator.generateKeyPair();
    }

    static byte[] octets(ASN1OctetString string) { return string == null ? null : string.getOctets(); }

    static byte[] protect(Question question, PKIBody body) throws Exception {
        boolean delegated = question.is("delegate");
        X509CertificateHolder sender = delegated ? delegate : own;
        ProtectedPKIMessageBuilder builder =
            new ProtectedPKIMessageBuilder(new GeneralName(sender.getSubject()), question.header().getSender())
                .setMessageTime(new Date())
                .setTransactionID(question.is("transaction") ? new byte[16] : octets(question.header().getTransactionID()))
                .setRecipNonce(question.is("nonce") ? new byte[16] : octets(question.header().getSenderNonce()))
                .setSenderNonce(BigInteger.valueOf(System.nanoTime()).shiftLeft(64).toByteArray())
                .setBody(body);
        if (question.withSecret && !question.is("signed") && !delegated)
            return builder.setSenderKID(octets(question.header().getSenderKID()))
                .build(new PKMACBuilder(new JcePKMACValuesCalculator().setProvider("BC"))
                    .build((question.is("secret") ? "another" : secret).toCharArray()))
                .toASN1Structure().getEncoded();
        return builder.addCMPCertificate(sender).build(signer(delegated ? delegateKey : key))
            .toASN1Structure().getEncoded();
    }

    static byte[] plain(Question question, PKIBody body) throws Exception {
        PKIHeader header = new PKIHeaderBuilder(2, new GeneralName(own.getSubject()), question.header().getSender())
            .setTransactionID(question.header().getTransactionID()).setRecipNonce(question.header().getSenderNonce()).build();
        return new PKIMessage(header, body).getEncoded();
    }
}
