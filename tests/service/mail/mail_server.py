"""A mail server for one test: mail_server.py MODE FOLDER [OPTION=VALUE ...]

Prints its port, serves on the loopback address until its standard input ends, and leaves in FOLDER what
it received: commands.txt (every line of every client) and mail.txt (the last mail, parsed).

MODE server:  a whole server. login=PLAIN|LOGIN|NTLM offers that login for user= and password= (for NTLM
              domain= too, and password= is the MD4 hash in hexadecimal). tls=starttls|implicit encrypts
              with a new certificate. refuse=ADDRESS refuses that recipient. silent=encrypted does not
              answer EHLO after STARTTLS. A refusal of an NTLM login repeats what the client sent.
MODE script:  answers each command with the text given as VERB=REPLY ("|" separates lines), else with 250.
              REPLY silent: says nothing more; late: 250 after 2.2 seconds; close: closes the connection.
              GREET, DOT (the end of a mail), LOGIN (each line of a login dialogue) and QUIT are verbs too.
              After 220 to STARTTLS comes plain text instead of TLS; with TLS=silent nothing.
MODE deaf:    its queue of connections is full: the system never answers.
"""
import asyncio
import base64
import email
import email.policy
import hmac
import logging
import os
import socket
import ssl
import struct
import subprocess
import sys
import warnings

from aiosmtpd.smtp import MISSING, SMTP, AuthResult

MODE, FOLDER = sys.argv[1:3]
warnings.simplefilter("ignore")  # of logins without encryption: this is the point of some tests
logging.disable()
OPTIONS = dict(option.split("=", 1) for option in sys.argv[3:])


def note(name, text, mode="a"):
    with open(os.path.join(FOLDER, name), mode, encoding="utf-8") as file:
        file.write(text)


NTLM_CHALLENGE = bytes.fromhex("0123456789abcdef")


def ntlm_challenge_message():
    """Type 2 (MS-NLMP 2.2.1.2): Unicode, target, NTLM, domain, extended session security, target information.

    With the last two together, as today's servers send them, a client answers by NTLMv2."""
    def pair(kind, text):
        value = text.encode("utf-16-le")
        return struct.pack("<HH", kind, len(value)) + value

    target = "TESTDOMAIN".encode("utf-16-le")
    information = pair(2, "TESTDOMAIN") + pair(1, "MAILSERVER") + struct.pack("<HH", 0, 0)
    flags = 0x00000001 | 0x00000004 | 0x00000200 | 0x00010000 | 0x00080000 | 0x00800000
    header = b"NTLMSSP\0" + struct.pack("<I", 2)
    header += struct.pack("<HHII", len(target), len(target), 48, flags) + NTLM_CHALLENGE + bytes(8)
    header += struct.pack("<HHI", len(information), len(information), 48 + len(target))
    return header + target + information


def ntlm_problem(message):
    """Why this type 3 message does not prove that its sender knows the password; None when it does.

    MS-NLMP 3.3.2: the proof is computed here from the password's hash and compared."""
    def field(offset):
        length, _, start = struct.unpack("<HHI", message[offset:offset + 8])
        return message[start:start + length]

    if message[:12] != b"NTLMSSP\0" + struct.pack("<I", 3):
        return "no type 3 message"
    response, domain, user = field(20), field(28).decode("utf-16-le"), field(36).decode("utf-16-le")
    if (domain, user.upper()) != (OPTIONS["domain"], OPTIONS["user"].upper()):
        return f"another user: {domain} {user}"
    key = hmac.digest(bytes.fromhex(OPTIONS["password"]), (user.upper() + domain).encode("utf-16-le"), "md5")
    proof, blob = response[:16], response[16:]
    if len(blob) < 28 or blob[:2] != b"\x01\x01":
        return "no NTLMv2 response"
    return None if proof == hmac.digest(key, NTLM_CHALLENGE + blob, "md5") else "wrong password"


class Handler:
    def authenticate(self, server, session, envelope, mechanism, data):
        success = (data.login.decode(), data.password.decode()) == (OPTIONS["user"], OPTIONS["password"])
        return AuthResult(success=success, handled=False,
                          message=None if success else "535-5.7.8 Not you\r\n535 5.7.8 Go away")

    async def auth_NTLM(self, server, args):
        negotiate = await server.challenge_auth("")
        if negotiate is MISSING or not negotiate.startswith(b"NTLMSSP\0\x01"):
            return AuthResult(success=False, handled=False)
        answer = await server.challenge_auth(ntlm_challenge_message())
        problem = "no answer" if answer is MISSING else ntlm_problem(answer)
        told = "" if answer is MISSING else base64.b64encode(answer).decode()
        return AuthResult(success=problem is None, handled=False, auth_data="user",
                          message=problem and f"535-5.7.8 {told}\r\n535 5.7.8 {problem}")

    async def handle_EHLO(self, server, session, envelope, name, replies):
        if OPTIONS.get("silent") == "encrypted" and server.transport.get_extra_info("ssl_object"):
            await asyncio.sleep(600)
        session.host_name = name
        return replies

    async def handle_RCPT(self, server, session, envelope, address, options):
        if address == OPTIONS.get("refuse"):
            return "550-5.1.1 No such user\r\n550-5.1.1 " + address + "\r\n550 5.1.1 Sorry"
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        mail = email.message_from_bytes(envelope.content, policy=email.policy.default)
        raw_lines = envelope.content.split(b"\r\n")
        facts = {
            "sender": envelope.mail_from, "recipients": " ".join(envelope.rcpt_tos),
            "encrypted": server.transport.get_extra_info("ssl_object") is not None,
            "hello": session.host_name, "authenticated": session.authenticated,
            "from": mail["From"], "to": mail["To"], "subject": mail["Subject"],
            "defects": len(mail.defects), "longest": max(map(len, raw_lines)),
            "bare": any(b"\n" in line or b"\r" in line for line in raw_lines),
            "body": repr(mail.get_content()),
        }
        note("mail.txt", "".join(f"{name}: {value}\n" for name, value in facts.items()), "w")
        return "250 OK"


def certificate():
    key, chain = os.path.join(FOLDER, "key.pem"), os.path.join(FOLDER, "certificate.pem")
    subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
                    "-nodes", "-keyout", key, "-out", chain, "-days", "1", "-subj", "/CN=mail.invalid"],
                   check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(chain, key)
    return context


async def whole_server():
    logins, tls = OPTIONS.get("login", "").split(), OPTIONS.get("tls")
    context = certificate() if tls else None
    handler = Handler()

    def connection():
        return SMTP(handler, hostname="test.invalid", authenticator=handler.authenticate,
                    auth_required=bool(logins), auth_require_tls=not logins or tls == "starttls",
                    require_starttls=tls == "starttls", tls_context=context if tls == "starttls" else None,
                    auth_exclude_mechanism={"PLAIN", "LOGIN", "NTLM"} - set(logins))

    loop = asyncio.get_running_loop()
    return await loop.create_server(connection, "127.0.0.1", 0, ssl=context if tls == "implicit" else None)


async def scripted_client(reader, writer):
    """Ends by itself when the client has gone."""
    async def answer(verb, otherwise="250 OK"):
        reply = OPTIONS.get(verb, otherwise)
        if reply == "close":
            writer.close()
        elif reply == "silent":
            await asyncio.sleep(600)
        elif reply == "late":
            await asyncio.sleep(2.2)
            writer.write(b"250 OK\r\n")
        else:
            writer.write(reply.replace("|", "\r\n").encode("utf-8", "surrogateescape") + b"\r\n")

    await answer("GREET", "220 test.invalid")
    place = "commands"
    while line := await reader.readline():
        note("commands.txt", line.decode("latin-1"))
        verb = line.split()[0].decode("latin-1").upper() if line.split() else ""
        if place == "message":
            if line == b".\r\n":
                place = "commands"
                await answer("DOT")
        elif place == "login":
            if not OPTIONS.get("LOGIN", "").startswith("334"):
                place = "commands"
            await answer("LOGIN")
        else:
            if verb == "DATA" and OPTIONS.get(verb, "354").startswith("354"):
                place = "message"
            if verb == "AUTH" and OPTIONS.get("AUTH", "").startswith("334"):
                place = "login"
            if verb == "STARTTLS" and OPTIONS.get(verb, "").startswith("220"):
                await answer(verb)
                await reader.read(1)
                await answer("TLS", "")
                writer.write(b"this is not TLS\r\n")
                break
            await answer(verb, {"DATA": "354 Go on", "QUIT": "221 Bye"}.get(verb, "250 OK"))
    writer.close()


def deaf_socket():
    listener = socket.socket()
    listener.bind(("127.0.0.1", 0))
    listener.listen(0)
    clients = []
    for _ in range(4):
        client = socket.socket()
        client.setblocking(False)
        client.connect_ex(listener.getsockname())
        clients.append(client)
    return listener, clients


async def main():
    if MODE == "deaf":
        server, clients = deaf_socket()
        port = server.getsockname()[1]
    else:
        serve = whole_server() if MODE == "server" else asyncio.start_server(scripted_client, "127.0.0.1", 0)
        server = await serve
        port = server.sockets[0].getsockname()[1]
    print(port, flush=True)
    await asyncio.get_running_loop().run_in_executor(None, sys.stdin.read)
    os._exit(0)


asyncio.run(main())
