"""A database server for one test: tds_server.py FOLDER

Prints its port and that of its browser service, and serves on the loopback address until its standard input
ends. Speaks the tabular data stream, version 7.4, without encryption. Knows the statements that this program
and its tests send; all others are syntax errors. FOLDER connects it with the test:

logins          who may log in: user and password by turns, each with a NUL after it
hook-7          what happens at step 7 instead of, or besides, the usual answer: a kind of Hook and its text
steps           how many there were so far: each PRELOGIN, LOGIN7, batch, call and transaction request is one
transactions    how many are open
batch-0, call-0, login-0, question-0    what was received and not met by a hook, in the order of its coming:
                statements; statements with a NUL before each of their values; users; bytes of the browser
"""
import copy
import os
import re
import socket
import socketserver
import struct
import sys
import threading

FOLDER = sys.argv[1]
BATCH, CALL, ATTENTION, TRANSACTION, LOGIN, PRELOGIN = 0x01, 0x03, 0x06, 0x0E, 0x10, 0x12
DATABASE_CHANGED, BEGUN, COMMITTED, ROLLED_BACK = 1, 8, 9, 10
MORE_RESULTS, FAILED, COUNTED, ATTENTION_SEEN = 0x01, 0x02, 0x10, 0x20
LOCK = threading.Lock()  # guards all that the connections share


class Shared:
    databases = {"master": {"name": "master", "procedure": None, "public": False}}  # by names in lower case
    steps = 0
    transactions = 0
    received = {}


class SqlError(Exception):
    def __init__(self, number, text):
        self.number, self.text = number, text


def write(name, content):
    with open(os.path.join(FOLDER, name), "wb") as file:
        file.write(content)


def read(name):
    path = os.path.join(FOLDER, name)
    return open(path, "rb").read() if os.path.exists(path) else b""


def receive(kind, content):
    number = Shared.received[kind] = Shared.received.get(kind, -1) + 1
    write(f"{kind}-{number}", content)


class Reader:
    """Takes little-endian values off the front of a request."""

    def __init__(self, data):
        self.data, self.position = data, 0

    def bytes(self, size):
        self.position += size
        if self.position > len(self.data):
            raise ValueError("a message shorter than it says")
        return self.data[self.position - size:self.position]

    def number(self, size):
        return int.from_bytes(self.bytes(size), "little")

    def text(self, size):
        return self.bytes(size).decode("utf-16-le")

    def rest(self):
        return len(self.data) - self.position

    def headers(self):
        if self.number(4) != 22:
            raise ValueError("a request without the header of its transaction")
        self.bytes(18)

    def parameter(self):
        """The value of one of type ntext or nvarchar."""
        self.text(2 * self.number(1))  # name
        self.number(1)                 # by reference or not
        size = {0x63: 4, 0xE7: 2}[self.number(1)]
        self.bytes(size + 5)           # longest value, collation
        return self.text(self.number(size))


def short_text(text):
    wide = text.encode("utf-16-le")
    return struct.pack("<B", len(wide) // 2) + wide


def token(kind, body):
    return struct.pack("<BH", kind, len(body)) + body


def note(kind, number, severity, text):
    wide = text.encode("utf-16-le")
    return token(kind, struct.pack("<IBBH", number, 1, severity, len(wide) // 2) + wide +
                 short_text("TESTSERVER") + short_text("") + struct.pack("<I", 1))


def done(flags=0, rows=0):
    return struct.pack("<BHHQ", 0xFD, flags, 0, rows)


def error(failure):
    return note(0xAA, failure.number, 16, failure.text) + done(FAILED)


def result(rows, flags=0):
    """One column without a name, nvarchar(max)."""
    collation = b"\x09\x04\xD0\x00\x34"  # Latin 1, code page 1252, no letter case
    reply = struct.pack("<BHIHBH", 0x81, 1, 0, 1, 0xE7, 0xFFFF) + collation + short_text("")
    for row in rows:
        wide = row.encode("utf-16-le")
        piece = struct.pack("<I", len(wide)) + wide if wide else b""
        reply += b"\xD1" + struct.pack("<Q", len(wide)) + piece + struct.pack("<I", 0)
    return reply + done(COUNTED | flags, len(rows))


def transaction_changed(kind):
    number, none = b"\x08" + bytes(7) + b"\x01", b"\x00"
    return token(0xE3, bytes([kind]) + (number + none if kind == BEGUN else none + number))


def database_changed(now, before):
    return (token(0xE3, bytes([DATABASE_CHANGED]) + short_text(now) + short_text(before)) +
            note(0xAB, 5701, 0, f"Changed database context to '{now}'."))


def find(databases, name):
    if name.lower() not in databases:
        raise SqlError(911, f"Database '{name}' does not exist. "
                            "Make sure that the name is entered correctly.")
    return databases[name.lower()]


class Connection(socketserver.BaseRequestHandler):
    def handle(self):
        self.database, self.copy = "master", None  # a transaction works on a copy of all databases
        self.request.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        try:
            while message := self.read_message():
                if message[0] == ATTENTION:  # no step: whether and when it comes depends on the clock
                    self.send(done(ATTENTION_SEEN))
                elif not self.answer(*message):
                    return
        except ConnectionError:
            pass
        finally:
            with LOCK:
                self.end_transaction(False)

    def read_bytes(self, size):
        data = b""
        while len(data) < size and (more := self.request.recv(size - len(data))):
            data += more
        return data if len(data) == size else None

    def read_message(self):
        """Its type, and the bodies of all its packets; nothing once the connection is closed."""
        body = b""
        while header := self.read_bytes(8):
            kind, status, size = struct.unpack(">BBH4x", header)
            body += self.read_bytes(size - 8) or b""
            if status & 1:
                return kind, body
        return None

    def send(self, reply):
        packets = [reply[start:start + 4088] for start in range(0, len(reply), 4088)]
        for number, packet in enumerate(packets, 1):
            last = number == len(packets)
            header = struct.pack(">BBHHBB", 0x04, last, len(packet) + 8, 0, number & 255, 0)
            self.request.sendall(header + packet)

    def answer(self, kind, body):
        """False when the connection is to be closed."""
        with LOCK:
            Shared.steps += 1
            write("steps", str(Shared.steps).encode())
            hook, _, text = read(f"hook-{Shared.steps}").partition(b" ")
            if hook == b"error-and-rollback":
                rolled_back = transaction_changed(ROLLED_BACK) if self.end_transaction(False) else b""
        if hook == b"silent":
            while self.read_message():
                pass
        elif hook == b"bytes":
            self.request.sendall(text)
            return True
        elif hook in (b"error", b"error-and-rollback"):
            failure = error(SqlError(*self.hook_error(text)))
            self.send(failure if hook == b"error" else rolled_back + failure)
            return True
        if hook in (b"silent", b"drop"):
            return False
        with LOCK:
            try:
                reply = self.reply(kind, Reader(body), self.hook_error(text) if hook else None)
            except SqlError as failure:
                reply = error(failure)
        self.send(reply)
        return kind != LOGIN or reply[0] != 0xAA

    @staticmethod
    def hook_error(text):
        number, _, sentence = text.decode().partition(" ")
        return int(number), sentence

    def reply(self, kind, request, late_error):
        if kind == PRELOGIN:  # version, and no encryption
            return (b"\x00\x00\x0B\x00\x06\x01\x00\x11\x00\x01\xFF" + b"\x10\x00\x03\xE8\x00\x00\x02")
        if kind == LOGIN:
            return self.log_in(request.data)
        request.headers()
        if kind == TRANSACTION:
            return self.change_transaction(request)
        if kind == BATCH:
            statement = request.text(request.rest())
            receive("batch", statement.encode())
        else:
            statement = self.called(request)
        before = self.database
        rows = self.run(statement)
        reply = database_changed(self.database, before) if self.database != before else b""
        if late_error:
            return reply + result(rows or [], MORE_RESULTS) + error(SqlError(*late_error))
        return reply + (done() if rows is None else result(rows))

    @staticmethod
    def called(request):
        if (kind := (request.number(2), request.number(2))) != (0xFFFF, 10):
            raise ValueError(f"a call of another procedure than sp_executesql: {kind}")
        request.number(2)  # options
        statement = request.parameter()
        values = []
        if request.rest():
            request.parameter()  # declares those that follow: @P1, @P2, ...
        while request.rest():
            values.append(request.parameter())
        receive("call", "\0".join([statement] + values).encode())
        return statement

    def log_in(self, data):
        def field(number):  # offset and length of each text follow from the 36th byte on
            offset, length = struct.unpack_from("<HH", data, 36 + 4 * number)
            return data[offset:offset + 2 * length]

        user = field(1).decode("utf-16-le")
        unmasked = [byte ^ 0xA5 for byte in field(2)]
        password = bytes((byte << 4 | byte >> 4) & 255 for byte in unmasked).decode("utf-16-le")
        receive("login", user.encode())
        accepted = read("logins").decode().split("\0")
        if (user, password) not in zip(accepted[::2], accepted[1::2]):
            raise SqlError(18456, f"Login failed for user '{user}'.")
        version = b"\x01\x74\x00\x00\x04" + short_text("Test Server") + b"\x10\x00\x03\xE8"
        return database_changed("master", "master") + token(0xAD, version) + done()

    def change_transaction(self, request):
        kind, begins_again = request.number(2), False
        reply = b""
        if kind != 5:
            request.text(2 * request.number(1))  # name
            begins_again = request.number(1) & 1
            if not self.end_transaction(kind == 7):
                raise SqlError(3903, "The request has no corresponding BEGIN TRANSACTION.")
            reply = transaction_changed(COMMITTED if kind == 7 else ROLLED_BACK)
        if kind == 5 or begins_again:
            self.count_transactions(0 if self.copy else 1)
            self.copy = copy.deepcopy(Shared.databases)
            reply += transaction_changed(BEGUN)
        return reply + done()

    def end_transaction(self, keeps_changes):
        """False when there is none."""
        if self.copy is None:
            return False
        if keeps_changes:
            Shared.databases = self.copy
        self.copy = None
        self.count_transactions(-1)
        return True

    @staticmethod
    def count_transactions(change):
        Shared.transactions += change
        write("transactions", str(Shared.transactions).encode())

    def run(self, batch):
        """The rows of the result; None without one."""
        statement = re.sub(r"\A(\s|--[^\n]*\n|/\*.*?\*/)*", "", batch, flags=re.S)
        words = statement.lower()
        if words == "select db_name()":
            return [self.database]
        if words == "select name from sysdatabases order by name":
            return [database["name"] for _, database in sorted(Shared.databases.items())]
        if about := re.fullmatch(r"(use|create database|drop database) \[((?:[^]]|]])*)]", statement, re.I):
            return self.run_on_database(about[1].lower(), about[2].replace("]]", "]"))
        database = find(Shared.databases if self.copy is None else self.copy, self.database)
        if words == "select count(*) from sysobjects where xtype='p' and name='sp_sendpln'":
            return ["0" if database["procedure"] is None else "1"]
        if words == "select definition from sys.sql_modules where object_id = object_id('sp_sendpln')":
            return [] if database["procedure"] is None else [database["procedure"]]
        if words == ("select count(*) from sys.database_permissions where major_id = object_id('sp_sendpln') "
                     "and grantee_principal_id = 0"):
            return ["1" if database["public"] else "0"]
        if batch.count("'") % 2:
            raise SqlError(105, "Unclosed quotation mark after the character string ''.")
        creates = words.startswith("create procedure sp_sendpln")
        if creates and database["procedure"] is not None:
            raise SqlError(2714, "There is already an object named 'sp_sendPLN' in the database.")
        if not creates and database["procedure"] is None:
            raise SqlError(2812, "Could not find stored procedure 'sp_sendPLN'.")
        if creates or words.startswith("alter procedure sp_sendpln"):
            database["procedure"] = batch  # who may run it stays as it was
        elif words == "grant execute on sp_sendpln to public":
            database["public"] = True
        elif not words.startswith("exec sp_sendpln "):
            raise SqlError(102, f"Incorrect syntax near '{batch[:50]}'.")
        return None

    def run_on_database(self, verb, name):
        if verb == "create database":
            Shared.databases[name.lower()] = {"name": name, "procedure": None, "public": False}
        elif verb == "use":
            self.database = find(Shared.databases, name)["name"]
        elif Shared.transactions:  # one that a client has left open is in the way, wherever it is
            raise SqlError(3702, f"Cannot drop database \"{name}\" because it is currently in use.")
        else:
            find(Shared.databases, name)
            del Shared.databases[name.lower()]


def browse(browser, port):
    """Answers questions about the instance SALES and no other."""
    while True:
        question, client = browser.recvfrom(1024)
        receive("question", question)
        if question[1:].rstrip(b"\0").upper() == b"SALES":
            text = f"ServerName;HOST;InstanceName;SALES;IsClustered;No;Version;16.0.1000.6;tcp;{port};;"
            browser.sendto(b"\x05" + struct.pack("<H", len(text)) + text.encode(), client)


class Server(socketserver.ThreadingTCPServer):
    daemon_threads = True
    request_queue_size = 100


write("steps", b"0")
write("transactions", b"0")
server = Server(("127.0.0.1", 0), Connection)
browser = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
browser.bind(("127.0.0.1", 0))
port = server.server_address[1]
for service in (server.serve_forever, lambda: browse(browser, port)):
    threading.Thread(target=service, daemon=True).start()
print(port, browser.getsockname()[1], flush=True)
sys.stdin.read()
os._exit(0)
