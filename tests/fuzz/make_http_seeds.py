"""Makes the seeds of the HTTP fuzzer: sound requests of each form, and each way in which one is not. Run it in this
folder after a change."""
import pathlib

TOKEN = "Authorization: Bearer 0123456789abcdef\r\n"
HOST = "Host: 127.0.0.1:80\r\n"


def request(line, *headers, body=""):
    length = f"Content-Length: {len(body)}\r\n" if body else ""
    return f"{line} HTTP/1.1\r\n{HOST}{''.join(headers)}{length}\r\n{body}"


seeds = {
    "get": request("GET /printers"),
    "query": request("GET /printers/a%20b/documents?kind=receipt&limit=3&=&x=%zz+"),
    "token": request("GET /printers", TOKEN),
    "cookie": request("GET /", "Cookie: a=b; telvofm_token_80=0123456789abcdef; c\r\n"),
    "origin": request("GET /", "Origin: http://evil.example\r\n"),
    "session": request("POST /session", body='{"token": "0123456789abcdef"}'),
    "body": request("PATCH /x", TOKEN, body='{"name": "a", "limit": 5, "now": "2026-01-31 12:00", "amount": "1.50"}'),
    "deep": request("POST /x", TOKEN, body="[" * 40),
    "resume": request("GET /printers/printer/trace/events", "Last-Event-ID: 7\r\n"),
    "pipelined": request("GET /a") + request("GET /b") + request("POST /c", body="{}"),
    "chunks": request("POST /x", "Transfer-Encoding: chunked\r\n") + '3;a=b\r\n{"n\r\n9\r\name": "a"}\r\n0\r\nX: y\r\n\r\n',
    "expect": request("POST /x", "Expect: 100-continue\r\n", body="{}"),
    "two_hosts": request("GET /", "Host: evil.example\r\n"),
    "old": "GET / HTTP/1.0\r\n\r\n",
    "half": "GET / HTTP/1.1\r\nHost: loc",
    "large_header": request("GET /" + "x" * 300),
    "large_body": request("POST /", body="x" * 600),
    "folded": request("GET /", "X: a\r\n b\r\n"),
    "rubbish": "\x16\x03\x01\x02\r\n\r\n",
}

folder = pathlib.Path("http_seeds")
folder.mkdir(exist_ok=True)
for name, text in seeds.items():
    (folder / name).write_bytes(text.encode("latin-1"))
