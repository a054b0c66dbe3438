// SPDX-FileCopyrightText: The SigilDesk authors
// SPDX-License-Identifier: LicenseRef-SigilDesk

// Messages and time stamps by Bouncy Castle. Each line on the standard input is a command; the first that fails ends the program.
//
//   sign CERTIFICATE KEY SCHEME FORM IN OUT     FORM: attached, detached, bare (without signed attributes)
//   verify IN OUT [CONTENT]                     every signer; CONTENT of a detached message
//   envelope CIPHER PADDING IN OUT CERTIFICATE...   CIPHER: an identifier; PADDING for RSA: v15, oaep
//   open CERTIFICATE KEY IN OUT
//   lock CIPHER IN KEY OUT                      encrypted data under a key that is written
//   unlock KEY IN OUT
//   stamped REQUEST RESPONSE CERTIFICATE        whether the response is one to the request, signed by the authority
//   stamp-inside MESSAGE CERTIFICATE            whether the first signer's signature is stamped by the authority
//   serve PORT CERTIFICATE KEY SCHEME           a time-stamping authority, until it is killed
//
// Certificates and private keys (PKCS#8) in DER, other keys as they are.

import com.sun.net.httpserver.HttpServer;
import java.io.BufferedReader;
import java.io.ByteArrayInputStream;
import java.io.InputStream;
import java.io.InputStreamReader;
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
import java.security.cert.CertificateFactory;
import java.security.cert.X509Certificate;
import java.security.interfaces.ECPublicKey;
import java.security.spec.MGF1ParameterSpec;
import java.security.spec.PKCS8EncodedKeySpec;
import java.util.Arrays;
import java.util.Date;
import java.util.List;
import javax.crypto.Cipher;
import javax.crypto.CipherInputStream;
import javax.crypto.spec.IvParameterSpec;
import javax.crypto.spec.OAEPParameterSpec;
import javax.crypto.spec.PSource;
import javax.crypto.spec.SecretKeySpec;
import org.bouncycastle.asn1.ASN1ObjectIdentifier;
import org.bouncycastle.asn1.ASN1OctetString;
import org.bouncycastle.asn1.cms.Attribute;
import org.bouncycastle.asn1.cms.ContentInfo;
import org.bouncycastle.asn1.nist.NISTObjectIdentifiers;
import org.bouncycastle.asn1.pkcs.PKCSObjectIdentifiers;
import org.bouncycastle.asn1.pkcs.PrivateKeyInfo;
import org.bouncycastle.asn1.x509.AlgorithmIdentifier;
import org.bouncycastle.cert.X509CertificateHolder;
import org.bouncycastle.cert.jcajce.JcaCertStore;
import org.bouncycastle.cms.*;
import org.bouncycastle.cms.jcajce.*;
import org.bouncycastle.jce.provider.BouncyCastleProvider;
import org.bouncycastle.operator.DigestCalculatorProvider;
import org.bouncycastle.operator.InputDecryptor;
import org.bouncycastle.operator.OutputEncryptor;
import org.bouncycastle.operator.jcajce.JcaAlgorithmParametersConverter;
import org.bouncycastle.operator.jcajce.JcaContentSignerBuilder;
import org.bouncycastle.operator.jcajce.JcaDigestCalculatorProviderBuilder;
import org.bouncycastle.tsp.*;
import org.bouncycastle.util.Selector;
import org.bouncycastle.util.Store;

public class BouncyCastle {
    static byte[] read(String path) throws Exception { return Files.readAllBytes(Path.of(path)); }

    static void write(String path, byte[] bytes) throws Exception { Files.write(Path.of(path), bytes); }

    static X509Certificate certificate(String path) throws Exception {
        return (X509Certificate) CertificateFactory.getInstance("X.509", "BC")
            .generateCertificate(new ByteArrayInputStream(read(path)));
    }

    static PrivateKey privateKey(String path) throws Exception {
        byte[] bytes = read(path);
        String algorithm = PrivateKeyInfo.getInstance(bytes).getPrivateKeyAlgorithm().getAlgorithm().getId();
        return KeyFactory.getInstance(algorithm, "BC").generatePrivate(new PKCS8EncodedKeySpec(bytes));
    }

    static DigestCalculatorProvider digests() throws Exception {
        return new JcaDigestCalculatorProviderBuilder().setProvider("BC").build();
    }

    static void sign(String certificate, String key, String scheme, String form, String in, String out) throws Exception {
        X509Certificate signer = certificate(certificate);
        CMSSignedDataGenerator generator = new CMSSignedDataGenerator();
        generator.addSignerInfoGenerator(new JcaSignerInfoGeneratorBuilder(digests()).setDirectSignature(form.equals("bare"))
            .build(new JcaContentSignerBuilder(scheme).setProvider("BC").build(privateKey(key)), signer));
        generator.addCertificates(new JcaCertStore(List.of(signer)));
        CMSSignedData message = generator.generate(new CMSProcessableByteArray(read(in)), !form.equals("detached"));
        write(out, message.getEncoded("DER"));
    }

    @SuppressWarnings("unchecked")
    static X509CertificateHolder find(Store<X509CertificateHolder> certificates, Object id) {
        return certificates.getMatches((Selector<X509CertificateHolder>) id).iterator().next();
    }

    static void verify(String in, String out, String content) throws Exception {
        CMSSignedData message = content == null ? new CMSSignedData(read(in))
                                                : new CMSSignedData(new CMSProcessableByteArray(read(content)), read(in));
        for (SignerInformation signer : message.getSignerInfos().getSigners())
            if (!signer.verify(new JcaSimpleSignerInfoVerifierBuilder().setProvider("BC")
                    .build(find(message.getCertificates(), signer.getSID()))))
                throw new Exception("wrong signature");
        write(out, (byte[]) message.getSignedContent().getContent());
    }

    static RecipientInfoGenerator agreement(X509Certificate certificate) throws Exception {
        KeyPairGenerator pairs = KeyPairGenerator.getInstance("EC", "BC");
        pairs.initialize(((ECPublicKey) certificate.getPublicKey()).getParams());
        KeyPair pair = pairs.generateKeyPair();
        return new JceKeyAgreeRecipientInfoGenerator(CMSAlgorithm.ECDH_SHA256KDF, pair.getPrivate(), pair.getPublic(),
            CMSAlgorithm.AES128_WRAP).addRecipient(certificate).setProvider("BC");
    }

    static RecipientInfoGenerator transport(X509Certificate certificate, String padding) throws Exception {
        if (!padding.equals("oaep"))
            return new JceKeyTransRecipientInfoGenerator(certificate).setProvider("BC");
        AlgorithmIdentifier oaep = new JcaAlgorithmParametersConverter().getAlgorithmIdentifier(
            PKCSObjectIdentifiers.id_RSAES_OAEP,
            new OAEPParameterSpec("SHA-256", "MGF1", MGF1ParameterSpec.SHA256, PSource.PSpecified.DEFAULT));
        return new JceKeyTransRecipientInfoGenerator(certificate, oaep).setProvider("BC");
    }

    static void envelope(String cipher, String padding, String in, String out, List<String> recipients) throws Exception {
        CMSEnvelopedDataGenerator generator = new CMSEnvelopedDataGenerator();
        for (String recipient : recipients) {
            X509Certificate certificate = certificate(recipient);
            generator.addRecipientInfoGenerator(certificate.getPublicKey() instanceof ECPublicKey
                ? agreement(certificate) : transport(certificate, padding));
        }
        write(out, generator.generate(new CMSProcessableByteArray(read(in)), encryptor(cipher)).getEncoded());
    }

    static OutputEncryptor encryptor(String cipher) throws Exception {
        return new JceCMSContentEncryptorBuilder(new ASN1ObjectIdentifier(cipher)).setProvider("BC").build();
    }

    static void open(String certificate, String key, String in, String out) throws Exception {
        RecipientInformationStore recipients = new CMSEnvelopedData(read(in)).getRecipientInfos();
        X509Certificate own = certificate(certificate);
        RecipientInformation recipient = recipients.get(own.getPublicKey() instanceof ECPublicKey
            ? new JceKeyAgreeRecipientId(own) : new JceKeyTransRecipientId(own));
        PrivateKey privateKey = privateKey(key);
        write(out, recipient.getContent(recipient instanceof KeyAgreeRecipientInformation
            ? new JceKeyAgreeEnvelopedRecipient(privateKey).setProvider("BC")
            : new JceKeyTransEnvelopedRecipient(privateKey).setProvider("BC")));
    }

    static void lock(String cipher, String in, String key, String out) throws Exception {
        OutputEncryptor encryptor = encryptor(cipher);
        CMSEncryptedData message = new CMSEncryptedDataGenerator().generate(new CMSProcessableByteArray(read(in)), encryptor);
        write(out, message.toASN1Structure().getEncoded());
        write(key, (byte[]) encryptor.getKey().getRepresentation());
    }

    static InputDecryptor decryptor(AlgorithmIdentifier algorithm, byte[] key) {
        return new InputDecryptor() {
            public AlgorithmIdentifier getAlgorithmIdentifier() { return algorithm; }

            public InputStream getInputStream(InputStream encrypted) {
                try {
                    String name = algorithm.getAlgorithm().getId();
                    Cipher cipher = Cipher.getInstance(name, "BC");
                    cipher.init(Cipher.DECRYPT_MODE, new SecretKeySpec(key, name),
                        new IvParameterSpec(ASN1OctetString.getInstance(algorithm.getParameters()).getOctets()));
                    return new CipherInputStream(encrypted, cipher);
                } catch (Exception exception) {
                    throw new IllegalStateException(exception);
                }
            }
        };
    }

    static void unlock(String key, String in, String out) throws Exception {
        byte[] bytes = read(key);
        CMSEncryptedData message = new CMSEncryptedData(ContentInfo.getInstance(read(in)));
        write(out, message.getContent(algorithm -> decryptor(algorithm, bytes)));
    }

    static void checkToken(TimeStampToken token, String authority) throws Exception {
        token.validate(new JcaSimpleSignerInfoVerifierBuilder().setProvider("BC").build(certificate(authority)));
    }

    static void stamped(String request, String response, String authority) throws Exception {
        TimeStampResponse answer = new TimeStampResponse(read(response));
        answer.validate(new TimeStampRequest(read(request)));
        checkToken(answer.getTimeStampToken(), authority);
    }

    static void stampInside(String message, String authority) throws Exception {
        SignerInformation signer = new CMSSignedData(read(message)).getSignerInfos().getSigners().iterator().next();
        Attribute attribute = signer.getUnsignedAttributes().get(PKCSObjectIdentifiers.id_aa_signatureTimeStampToken);
        TimeStampToken token = new TimeStampToken(
            new CMSSignedData(attribute.getAttrValues().getObjectAt(0).toASN1Primitive().getEncoded()));
        checkToken(token, authority);
        byte[] hash = java.security.MessageDigest
            .getInstance(token.getTimeStampInfo().getMessageImprintAlgOID().getId(), "BC").digest(signer.getSignature());
        if (!Arrays.equals(hash, token.getTimeStampInfo().getMessageImprintDigest()))
            throw new Exception("stamps something else");
    }

    static byte[] stamp(byte[] request, X509Certificate certificate, PrivateKey key, String scheme, int serial) throws Exception {
        TimeStampTokenGenerator tokens = new TimeStampTokenGenerator(
            new JcaSimpleSignerInfoGeneratorBuilder().setProvider("BC").build(scheme, key, certificate),
            digests().get(new AlgorithmIdentifier(NISTObjectIdentifiers.id_sha256)), new ASN1ObjectIdentifier("1.2.3.4"));
        tokens.setAccuracySeconds(1);
        tokens.addCertificates(new JcaCertStore(List.of(certificate)));
        TimeStampResponseGenerator responses = new TimeStampResponseGenerator(tokens, TSPAlgorithms.ALLOWED);
        return responses.generate(new TimeStampRequest(request), BigInteger.valueOf(serial), new Date()).getEncoded();
    }

    static void serve(int port, String certificatePath, String keyPath, String scheme) throws Exception {
        X509Certificate certificate = certificate(certificatePath);
        PrivateKey key = privateKey(keyPath);
        int[] serial = {0};
        HttpServer server = HttpServer.create(new InetSocketAddress(InetAddress.getLoopbackAddress(), port), 0);
        server.createContext("/", exchange -> {
            try (exchange) {
                byte[] answer = stamp(exchange.getRequestBody().readAllBytes(), certificate, key, scheme, ++serial[0]);
                exchange.getResponseHeaders().set("Content-Type", "application/timestamp-reply");
                exchange.sendResponseHeaders(200, answer.length);
                exchange.getResponseBody().write(answer);
            } catch (Exception exception) {
                exception.printStackTrace();
            }
        });
        server.start();
        System.out.println("waiting for requests");
        Thread.currentThread().join();
    }

    static void run(String[] words) throws Exception {
        switch (words[0]) {
            case "sign" -> sign(words[1], words[2], words[3], words[4], words[5], words[6]);
            case "verify" -> verify(words[1], words[2], words.length > 3 ? words[3] : null);
            case "envelope" -> envelope(words[1], words[2], words[3], words[4], Arrays.asList(words).subList(5, words.length));
            case "open" -> open(words[1], words[2], words[3], words[4]);
            case "lock" -> lock(words[1], words[2], words[3], words[4]);
            case "unlock" -> unlock(words[1], words[2], words[3]);
            case "stamped" -> stamped(words[1], words[2], words[3]);
            case "stamp-inside" -> stampInside(words[1], words[2]);
            case "serve" -> serve(Integer.parseInt(words[1]), words[2], words[3], words[4]);
            default -> throw new IllegalArgumentException(words[0]);
        }
    }

    public static void main(String[] arguments) throws Exception {
        Security.addProvider(new BouncyCastleProvider());
        BufferedReader commands = new BufferedReader(new InputStreamReader(System.in));
        for (String line = commands.readLine(); line != null; line = commands.readLine()) {
            System.out.println(line);
            run(line.split(" "));
        }
    }
}
