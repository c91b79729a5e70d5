#!/usr/bin/env python3
"""server.py [PORT]: answers a line like "100 USD EUR" on a loopback port with the converted amount.

One session for all connections, on asyncio's own loop: what another process saves counts from the
next line on, and nothing is waited for.
"""
from __future__ import annotations

import asyncio
import sys
from decimal import Decimal, InvalidOperation

import fexora


def answer(session: fexora.Session, line: str) -> str:
    try:
        amount, source, target = line.split()
        return str(session.convert(Decimal(amount), source, target))
    except InvalidOperation:
        return "error: expected a number"
    except (fexora.Error, ValueError) as error:
        return f"error: {error}"


async def main(port: int) -> None:
    with fexora.Session() as session:
        asyncio.get_running_loop().add_reader(session, session.look)

        async def serve(reader: asyncio.StreamReader, writer: asyncio.StreamWriter) -> None:
            while line := await reader.readline():
                writer.write(answer(session, line.decode("utf-8", "replace")).encode() + b"\n")
                await writer.drain()
            writer.close()

        server = await asyncio.start_server(serve, "127.0.0.1", port)
        print(f"listening on {server.sockets[0].getsockname()[1]}", flush=True)
        await server.serve_forever()


if __name__ == "__main__":
    try:
        asyncio.run(main(int(sys.argv[1]) if len(sys.argv) > 1 else 0))
    except KeyboardInterrupt:
        pass
