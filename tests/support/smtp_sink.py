#!/usr/bin/env python3
"""A local SMTP server for the tests: keeps every message it receives in a folder.

Usage: smtp_sink.py FOLDER [SECONDS]
Prints the port it listens on (127.0.0.1), then for message N writes N.eml (as received),
N.rcpt (the envelope recipients, one a line), N.subject and each attachment as N-<filename>.
Stops when standard input closes or after SECONDS (60 by default).
With SMTP_SINK_LOGIN=user:password in the environment the server demands that login (AUTH PLAIN or
LOGIN, without TLS) and refuses any other; each accepted login is appended to FOLDER/logins.
"""
import email
import email.policy
import os
import select
import socket
import sys
import time

from aiosmtpd.controller import Controller
from aiosmtpd.smtp import AuthResult, LoginPassword


class Keeper:
    def __init__(self, folder):
        self.folder = folder
        self.count = 0

    async def handle_DATA(self, server, session, envelope):
        self.count += 1
        n = self.count
        base = os.path.join(self.folder, str(n))
        raw = envelope.original_content or envelope.content
        msg = email.message_from_bytes(raw, policy=email.policy.default)
        for part in msg.iter_attachments():
            name = os.path.basename(part.get_filename() or "attachment")
            with open(f"{base}-{name}", "wb") as f:
                f.write(part.get_payload(decode=True))
        with open(base + ".subject", "w", encoding="utf-8") as f:
            f.write(str(msg["Subject"] or ""))
        with open(base + ".rcpt", "w", encoding="utf-8") as f:
            f.write("\n".join(envelope.rcpt_tos) + "\n")
        # The .eml last: its presence says the message is complete.
        with open(base + ".eml", "wb") as f:
            f.write(raw)
        return "250 OK"


class Login:
    def __init__(self, folder, expected):
        self.folder = folder
        self.user, _, self.password = expected.partition(":")

    def __call__(self, server, session, envelope, mechanism, auth_data):
        if not isinstance(auth_data, LoginPassword):
            return AuthResult(success=False, handled=False)
        user = auth_data.login.decode("utf-8", "replace")
        password = auth_data.password.decode("utf-8", "replace")
        if user != self.user or password != self.password:
            return AuthResult(success=False, handled=False)
        with open(os.path.join(self.folder, "logins"), "a", encoding="utf-8") as f:
            f.write(user + "\n")
        return AuthResult(success=True)


def free_port():
    with socket.socket() as s:
        s.bind(("127.0.0.1", 0))
        return s.getsockname()[1]


def main():
    folder = sys.argv[1]
    seconds = float(sys.argv[2]) if len(sys.argv) > 2 else 60.0
    os.makedirs(folder, exist_ok=True)
    port = free_port()
    login = os.environ.get("SMTP_SINK_LOGIN", "")
    if login:
        controller = Controller(Keeper(folder), hostname="127.0.0.1", port=port, auth_required=True,
                                auth_require_tls=False, authenticator=Login(folder, login))
    else:
        controller = Controller(Keeper(folder), hostname="127.0.0.1", port=port)
    controller.start()
    print(port, flush=True)
    deadline = time.monotonic() + seconds
    try:
        while time.monotonic() < deadline:
            ready, _, _ = select.select([sys.stdin], [], [], 0.5)
            if ready and not sys.stdin.buffer.read1(4096):
                break
    finally:
        controller.stop()


if __name__ == "__main__":
    main()
