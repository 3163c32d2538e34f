#ifndef VANTREL_PLATFORM_X11_XKBPROTOCOL_H
#define VANTREL_PLATFORM_X11_XKBPROTOCOL_H

/* The few requests of the X keyboard extension that the agent needs. In C, because libxcb's own header names a field
 * `explicit` and does not compile as C++. Requests are sent by one function and answered by another, so that several
 * can share a round trip. */

#include <stdbool.h>
#include <stdint.h>
#include <xcb/xcb.h>

#ifdef __cplusplus
extern "C" {
#endif

/* The types of the extension's events that say that a keymap may have changed (second byte of the event). */
enum { vantrelXkbNewKeyboardNotify = 0, vantrelXkbMapNotify = 1, vantrelXkbNamesNotify = 6 };

/* A key's name: four characters, padded with NULs, not terminated. All NULs for a keycode without a key. */
struct VantrelXkbKeyName {
    char name[4];
};

void vantrelXkbPrefetch(xcb_connection_t* connection);

/* The first event number of the extension; 0 when the server lacks it. */
uint8_t vantrelXkbFirstEvent(xcb_connection_t* connection);

unsigned vantrelXkbSendUseExtension(xcb_connection_t* connection);
bool vantrelXkbUseExtensionReply(xcb_connection_t* connection, unsigned sequence);

/* Asks that a held key sends presses only, and its release when it is really let go (detectable auto-repeat). */
unsigned vantrelXkbSendDetectableAutoRepeat(xcb_connection_t* connection);
bool vantrelXkbDetectableAutoRepeatReply(xcb_connection_t* connection, unsigned sequence);

/* The same on or off, without waiting for an answer. */
void vantrelXkbSetDetectableAutoRepeat(xcb_connection_t* connection, bool detectable);

/* Asks for the events above. */
void vantrelXkbSelectKeymapEvents(xcb_connection_t* connection);

unsigned vantrelXkbSendGetKeyNames(xcb_connection_t* connection);

/* Fills the 256 names by keycode; false when there is no answer. */
bool vantrelXkbGetKeyNamesReply(xcb_connection_t* connection, unsigned sequence, struct VantrelXkbKeyName names[256]);

#ifdef __cplusplus
}
#endif

#endif
