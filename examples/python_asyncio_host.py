"""Opens the terminal beside an asyncio program: its loop has its own thread, the terminal the main one."""

import asyncio
from concurrent.futures import FIRST_COMPLETED, Future, ThreadPoolExecutor, wait

import kolvane


class StreamDevice:
    """A device object over streams that belong to the loop in the other thread."""

    LastError, LastErrorDescription = 0, ""

    def __init__(self, loop, reader, writer):
        self.loop, self.reader, self.writer = loop, reader, writer

    def wait_for(self, coroutine, timeout=3.0):
        """Runs the coroutine in the loop and returns its result; the terminal shows its exceptions."""
        return asyncio.run_coroutine_threadsafe(asyncio.wait_for(coroutine, timeout), self.loop).result()

    def OpenDevice(self): pass

    def CloseDevice(self): pass

    def WriteCommand(self, Command):
        self.loop.call_soon_threadsafe(self.writer.write, Command.encode("cp1252", "replace"))

    def Read(self, Binary, Terminator, Count):
        read = self.reader.readexactly(Count) if Binary else self.reader.readuntil(bytes([Terminator]))
        received = self.wait_for(read)
        return received.decode("cp1252", "replace"), received

    def FlushInQ(self):
        return 0

    def GetDeviceInfo(self):
        return 100, "127.0.0.1"


async def simulated_instrument(reader, writer):
    weight = 12.5
    async for command in reader:
        weight += 0.25
        writer.write(f"{weight:.3f}\r\n".encode() if command.strip() == b"MSV?" else b"?\r\n")
    writer.close()


async def program(handover):
    """The asyncio program; it continues while the terminal is open."""
    server = await asyncio.start_server(simulated_instrument, "127.0.0.1", 0)
    reader, writer = await asyncio.open_connection(*server.sockets[0].getsockname())
    loop, closed = asyncio.get_running_loop(), asyncio.Event()
    handover.set_result((StreamDevice(loop, reader, writer), lambda: loop.call_soon_threadsafe(closed.set)))
    await closed.wait()
    writer.close()
    server.close()


def main():
    handover = Future()
    with ThreadPoolExecutor() as threads:
        running = threads.submit(asyncio.run, program(handover))
        wait([handover, running], return_when=FIRST_COMPLETED)
        if handover.done():
            device, end_program = handover.result()
            try:
                with kolvane.MainClass() as terminal:
                    terminal.InitTerminal(device)
                    terminal.OpenTerminal(1, 0)
            finally:
                end_program()
        running.result()


if __name__ == "__main__":
    main()
