"""Rates services on loopback: one that a test scripts, and nginx with the shipped configuration."""

import grp
import itertools
import os
import pwd
import socket
import socketserver
import subprocess
import threading
import zlib

from support import BIN, SOURCE, ProgramTest

LIMIT = 16 << 20  # of an answer
PACKED = "Content-Encoding: gzip"
SHIPPED = SOURCE / "packaging/nginx"


class Service:
    """Answers each request byte for byte with a script: bytes, or a function that is given the
    connection. `paths` has those of single paths. Keeps the heads of the requests."""

    def __init__(self, test, script=b"", **paths):
        self.script, self.paths, self.requests = script, paths, []
        service = self

        class Handler(socketserver.StreamRequestHandler):
            def handle(self):
                head = b"".join(itertools.takewhile(bytes.strip, self.rfile)).decode()
                service.requests.append(head)
                script = service.paths.get(head.split()[1], service.script)
                if callable(script):
                    script(self.connection)
                else:
                    self.connection.sendall(script)

        class Server(socketserver.ThreadingTCPServer):
            daemon_threads, request_queue_size = True, 64

            def handle_error(self, *_):
                pass  # a client that has gone

        self.server = Server(("127.0.0.1", 0), Handler)
        self.base = f"http://127.0.0.1:{self.server.server_address[1]}"
        self.url = self.base + "/rates.json"
        threading.Thread(target=self.server.serve_forever, args=(0.02,), daemon=True).start()
        test.addCleanup(self.server.server_close)
        test.addCleanup(self.server.shutdown)


def answer(body, *headers, status="200 OK"):
    """A whole answer."""
    body = body.encode() if isinstance(body, str) else body
    lines = [f"HTTP/1.1 {status}", "Connection: close", f"Content-Length: {len(body)}", *headers]
    return "\r\n".join(lines).encode() + b"\r\n\r\n" + body


def gzip(*chunks):
    packer = zlib.compressobj(1, zlib.DEFLATED, 31)
    return b"".join(map(packer.compress, chunks)) + packer.flush()


class ServedTest(ProgramTest):
    """A program whose rates service is `self.service`."""

    def setUp(self):
        super().setUp()
        self.service = Service(self)
        self.url = self.service.url


class Nginx:
    """Serves `folder`; the lines that the configuration asks to change are changed, no other."""

    FRAME = """
daemon off; worker_processes 1; user {user}; pid {run}/pid; error_log {run}/error.log;
events {{}}
http {{
  log_format asked escape=none '|$status|$body_bytes_sent|$http_if_none_match|$http_user_agent';
  access_log syslog:server=unix:{run}/log asked;
  client_body_temp_path {run}; proxy_temp_path {run}; fastcgi_temp_path {run};
  uwsgi_temp_path {run}; scgi_temp_path {run};
  include {run}/site.conf;
}}
"""

    def __init__(self, test, folder, run, site=SHIPPED / "fexora-rates.conf"):
        run.mkdir()
        # Each finished request comes as a message, which can be waited for.
        self.log = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
        self.log.bind(str(run / "log"))
        # The socket is made here and handed over, so that no port has to be guessed, and a
        # connection waits where nginx is not ready yet.
        listener = socket.create_server(("127.0.0.1", 0))
        port = listener.getsockname()[1]
        self.url = f"http://127.0.0.1:{port}/rates.json"
        site = site.read_text(encoding="utf-8")
        for old, new in (("listen 80 ", f"listen 127.0.0.1:{port} "),
                         ("listen [::]:80 default_server;", ""),
                         ("root /var/www/fexora;", f"root {folder};")):
            test.assertEqual(site.count(old), 1)
            site = site.replace(old, new)
        (run / "site.conf").write_text(site, encoding="utf-8")
        user = pwd.getpwuid(os.getuid())
        group = grp.getgrgid(user.pw_gid).gr_name
        frame = self.FRAME.format(run=run, user=f"{user.pw_name} {group}")
        (run / "nginx.conf").write_text(frame, encoding="utf-8")
        with listener:
            self.process = subprocess.Popen(
                ["/usr/sbin/nginx", "-p", run, "-c", run / "nginx.conf", "-e", run / "error.log"],
                env={"NGINX": f"{listener.fileno()};"}, pass_fds=[listener.fileno()])
        test.addCleanup(self.stop)

    def stop(self):
        self.process.terminate()
        self.process.wait()
        self.log.close()

    def asked(self):
        """The next request: (status, body bytes, entity tag that the client had, its name)."""
        _, status, size, tag, name = self.log.recv(4096).decode().split("|")
        return int(status), int(size), tag, name


def update_rates(folder, *words, tools=BIN):
    """Runs the shipped script with the built publisher; the exit code."""
    env = dict(os.environ, PATH=f"{tools}:{BIN}:{os.environ['PATH']}")
    command = [SHIPPED / "fexora-rates-update", folder, *words]
    return subprocess.run(command, env=env, stderr=subprocess.DEVNULL).returncode
