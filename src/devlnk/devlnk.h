#ifndef KOLVANE_DEVLNK_H
#define KOLVANE_DEVLNK_H

/* The port library's C interface. Every function returns a signed 32-bit status, negative = failure
   (docs/status-codes.md), 0 = success where nothing else is said; texts are 8-bit strings ended by NUL. One
   port is open at a time; nothing here is safe for several threads. */

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define KOLVANE_DEVLNK_EXPORT __attribute__((visibility("default")))

/* port: 1, 2 COM; 10, 20 RS485; 90, 91 LPT; 100 TCP/IP; 200 USB; 488 GPIB. text: parity letter n, e, o or
   nothing (serial), host name or address (TCP/IP), serial number (USB). data_bits: the IP port for TCP/IP,
   where values below 0 stand for 65536 more (a 16-bit port number that was kept with a sign); for serial
   ports values other than 7 mean 8, and stop_bits other than 2 mean 1. baud: the mode for LPT
   (1 nibble, 2 8 bits, 3 byte, 4 EPP, 95 Interlink). receive_buffer: bytes; a hint that no kind of port
   needs. The port that was open is closed first, whatever comes of the new one. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_OpenPort(int16_t port, int32_t baud, const char* text, int32_t data_bits,
                                           int16_t stop_bits, int16_t receive_buffer);
/* Chooses the bus address, 0 to 31, that the following transfers speak to. Kinds of port whose protocol
   carries no address send nothing: TCP/IP, COM, USB, LPT, and RS485 too, where the commands themselves
   address the device. GPIB opens and clears the device here; its addresses end at 30. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_SelectDevice(int16_t address);
/* Time-out of each following transfer in all, not for each byte; 0: only what can be done at once. 5000 at
   first. Also holds for opening TCP/IP when called before. Needs no open port and stays when one is opened or
   closed. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_SetTimeout(int32_t milliseconds);
/* How GPIB transfers end, from the next QDX_OpenPort on. Flags are 0 or 1, eos_char 0 to 255, zero is 0;
   milliseconds also set the time-out, as QDX_SetTimeout does, but 0 stands for 5000. Fails where GPIB is not
   available. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_SetGPIBCtrlBlock(int16_t eoi_on_write, int16_t stop_read_on_eos,
                                                   int16_t eoi_with_eos, int16_t eos_char, int16_t zero,
                                                   int16_t repeat_addressing, int32_t milliseconds);
/* port: 90 or 91. Only checks that: the system's driver needs nothing more. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_EnableNTPortIO(int16_t port);
/* Sends all of it; after a failure a part may have gone out. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_WritePort(const char* text);
/* Receives up to count bytes (at most 16 MiB) over the start of buffer and leaves the rest of it as it was.
   terminator 0: returns when count bytes are there. Otherwise: returns when that byte, 1 to 255, has arrived
   or count bytes are there; a lone terminator byte is stripped, the LF of a CR LF pair is handed
   over with its CR. A failure leaves buffer untouched; the bytes that came before it stay queued for the next
   read or flush. After a loss of the connection complete answers that came before it are delivered first.
   first: bytes delivered, second: bytes still queued; both may be null. The count is not the return value
   because callers may cut that to 16 bits. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_ReadPort(char* buffer, int32_t count, int32_t* first, int32_t* second,
                                           int16_t terminator);
/* Discards what has been received and not read; returns the number of bytes. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_FlushInQueue(void);
/* These two only fail when no port is open. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_ActivateInterpreter(int16_t value);
KOLVANE_DEVLNK_EXPORT int32_t QDX_CloseInterpreterEx(int16_t port, int16_t value);
/* Succeeds also when no port is open. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_ClosePort(void);
/* Returns after that many milliseconds; needs no open port. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_Delay(int32_t milliseconds);
/* Optional: a library in the place of this one may lack it. The device node that the next QDX_OpenPort of
   that port opens in place of the configured one (GPIB: board number); NULL or empty: as configured. Only for
   ports that stand for a node: COM, RS485, LPT, GPIB. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_SetNode(int16_t port, const char* node);
/* Number of device slots that a scan can fill; a constant. */
KOLVANE_DEVLNK_EXPORT int32_t USB_GetMaxUsbDevice(void);
/* Fills slots records of 510 characters: serial number in the first 255, description in the next 255, blanks
   behind; blanks alone where there are no more devices. Lists what QDX_OpenPort can open by serial number:
   instruments, then adapters with a serial line. Speaks to no device and returns within two seconds. */
KOLVANE_DEVLNK_EXPORT int32_t USB_ScanUsbDevice(int32_t slots, char* buffer);

/* The following are optional: callers look them up and work with libraries that lack them. */

/* handler is called about every 50 ms while a call here waits for more than that, with the time that the call
   has waited so far; another result than 0 gives the call up, which then fails with GivenUp (-60): bytes that
   came stay queued, of a command a part may have gone out. null: nobody is called. While handler runs, every
   function here but QDX_BytesWaiting, QDX_WaitDescriptor and QDX_StatusText fails with Busy (-13). A USB or
   GPIB transfer that was given up ends in the driver on its own time-out; until then the next one waits. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_SetWaitHandler(int32_t (*handler)(void* context, int32_t waited_ms),
                                                 void* context);
/* Bytes that have come and have not been read, as far as the system tells; 0 where no port is open. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_BytesWaiting(void);
/* A descriptor that becomes readable when something comes or the connection ends, good until the port is
   closed; bytes that QDX_BytesWaiting already counts may not show on it. Negative: there is none. Only to be
   waited on. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_WaitDescriptor(void);
/* What a status means, German, UTF-8, ended by NUL and cut to size bytes at whole characters. Returns the
   length of what buffer holds then, 0 for a status that is no failure of this library. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_StatusText(int32_t status, char* buffer, int32_t size);

#ifdef __cplusplus
}
#endif

#endif
