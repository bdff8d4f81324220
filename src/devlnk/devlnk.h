#ifndef KOLVANE_DEVLNK_H
#define KOLVANE_DEVLNK_H

/* The port library's C interface. Every function returns a signed 32-bit status: negative = failure
   (docs/status-codes.md), 0 = success unless stated otherwise. Texts are 8-bit strings ended by NUL. One port
   is open at a time; nothing here is thread-safe. */

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define KOLVANE_DEVLNK_EXPORT __attribute__((visibility("default")))

/* port: 1, 2 COM; 10, 20 RS485; 90, 91 LPT; 100 TCP/IP; 200 USB; 488 GPIB. text: parity letter n, e, o or
   empty (serial), host name or address (TCP/IP), serial number (USB). data_bits: the IP port for TCP/IP,
   where 65536 is added to negative values (a port number stored as a signed 16-bit value); for serial ports
   values other than 7 mean 8, and stop_bits other than 2 mean 1. baud: the mode for LPT (1 nibble, 2 8 bits,
   3 byte, 4 EPP, 95 Interlink). receive_buffer: bytes; a hint that no port kind needs. A port that is already
   open is closed first, even if opening the new one fails. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_OpenPort(int16_t port, int32_t baud, const char* text, int32_t data_bits,
                                           int16_t stop_bits, int16_t receive_buffer);
/* Sets the bus address, 0 to 31, for the following transfers. Port kinds whose protocol has no addresses send
   nothing: TCP/IP, COM, USB, LPT, and also RS485, where the commands themselves address the device. GPIB
   opens and clears the device here; its addresses end at 30. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_SelectDevice(int16_t address);
/* Time-out of each following transfer as a whole, not per byte; 0: only what can be done at once. Initially
   5000. Also applies to opening TCP/IP if called before. Needs no open port; survives opening and closing. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_SetTimeout(int32_t milliseconds);
/* How GPIB transfers end, from the next QDX_OpenPort on. Flags are 0 or 1, eos_char 0 to 255, zero is 0;
   milliseconds also sets the time-out, as QDX_SetTimeout does, but 0 means 5000. Fails if GPIB is not
   available. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_SetGPIBCtrlBlock(int16_t eoi_on_write, int16_t stop_read_on_eos,
                                                   int16_t eoi_with_eos, int16_t eos_char, int16_t zero,
                                                   int16_t repeat_addressing, int32_t milliseconds);
/* port: 90 or 91. Only checks that: the system's driver needs nothing else. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_EnableNTPortIO(int16_t port);
/* Sends the whole text; after a failure a part may have been sent. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_WritePort(const char* text);
/* Receives up to count bytes (at most 16 MiB) into the start of buffer and leaves the rest unchanged.
   terminator 0: returns once count bytes have arrived. Otherwise: returns once that byte, 1 to 255, or count
   bytes have arrived; a lone terminator byte is stripped, the LF of a CR LF pair is delivered with its CR. A
   failure leaves buffer unchanged; the bytes received before it stay queued for the next read or flush. After
   a connection loss, complete answers received before it are delivered first. first: bytes delivered, second:
   bytes still queued; both may be null. The count is not the return value because callers may truncate that
   to 16 bits. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_ReadPort(char* buffer, int32_t count, int32_t* first, int32_t* second,
                                           int16_t terminator);
/* Discards unread input; returns the number of bytes. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_FlushInQueue(void);
/* These two fail only if no port is open. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_ActivateInterpreter(int16_t value);
KOLVANE_DEVLNK_EXPORT int32_t QDX_CloseInterpreterEx(int16_t port, int16_t value);
/* Succeeds even if no port is open. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_ClosePort(void);
/* Returns after that many milliseconds; needs no open port. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_Delay(int32_t milliseconds);
/* Optional: a replacement for this library may lack it. Sets the device node that the next QDX_OpenPort of
   that port opens instead of the configured one (GPIB: board number); NULL or empty: as configured. Only for
   ports with a node: COM, RS485, LPT, GPIB. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_SetNode(int16_t port, const char* node);
/* Number of device slots that a scan can fill; a constant. */
KOLVANE_DEVLNK_EXPORT int32_t USB_GetMaxUsbDevice(void);
/* Fills slots records of 510 characters: serial number in the first 255, description in the next 255, padded
   with spaces; spaces only if there are no more devices. Lists what QDX_OpenPort can open by serial number:
   instruments, then adapters with a serial line. Sends nothing to any device; takes at most two seconds. */
KOLVANE_DEVLNK_EXPORT int32_t USB_ScanUsbDevice(int32_t slots, char* buffer);

/* The following are optional: callers look them up and also work with libraries that lack them. */

/* Sets a handler that is called about every 50 ms while a call waits for longer than that, with the time
   waited so far. A result other than 0 gives the call up, which then fails with GivenUp (-60): bytes received
   stay queued, and a part of a command may have been sent. null: no handler. While handler runs, every
   function except QDX_BytesWaiting, QDX_WaitDescriptor and QDX_StatusText fails with Busy (-13). A USB or
   GPIB transfer that was given up ends in the driver on its own time-out; until then the next one waits. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_SetWaitHandler(int32_t (*handler)(void* context, int32_t waited_ms),
                                                 void* context);
/* Unread bytes received, as far as the system reports; 0 if no port is open. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_BytesWaiting(void);
/* A descriptor that becomes readable when bytes arrive or the connection ends, valid until the port is
   closed; bytes that QDX_BytesWaiting already counts may not make it readable. Negative: none. Only for
   waiting. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_WaitDescriptor(void);
/* The meaning of a status, German, UTF-8, ended by NUL and cut to size bytes at whole characters. Returns the
   length of the text in buffer, 0 for a status that is not a failure of this library. */
KOLVANE_DEVLNK_EXPORT int32_t QDX_StatusText(int32_t status, char* buffer, int32_t size);

#ifdef __cplusplus
}
#endif

#endif
