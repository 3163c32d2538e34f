#pragma once

#include <ext-image-copy-capture-v1.h>
#include <fake-input.h>
#include <kde-output-order-v1.h>
#include <viewporter.h>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1.h>
#include <wlr-virtual-pointer-unstable-v1.h>
#include <xdg-output-unstable-v1.h>
#include <xx-hotkey-v1.h>

#include <cstdint>
#include <memory>

namespace vantrel::wayland {

struct WaylandDeleter {
    void operator()(wl_display* object) const { wl_display_disconnect(object); }
    void operator()(wl_registry* object) const { wl_registry_destroy(object); }
    void operator()(wl_callback* object) const { wl_callback_destroy(object); }
    void operator()(wl_compositor* object) const { wl_compositor_destroy(object); }
    void operator()(wl_surface* object) const { wl_surface_destroy(object); }
    void operator()(wl_shm* object) const { wl_shm_destroy(object); }
    void operator()(wl_shm_pool* object) const { wl_shm_pool_destroy(object); }
    void operator()(wl_buffer* object) const { wl_buffer_destroy(object); }
    void operator()(wl_seat* object) const { wl_seat_destroy(object); }
    void operator()(wl_pointer* object) const { wl_pointer_release(object); }
    void operator()(wl_keyboard* object) const { wl_keyboard_release(object); }
    void operator()(wl_output* object) const { wl_output_release(object); }
    void operator()(wp_viewporter* object) const { wp_viewporter_destroy(object); }
    void operator()(wp_viewport* object) const { wp_viewport_destroy(object); }
    void operator()(zxdg_output_manager_v1* object) const { zxdg_output_manager_v1_destroy(object); }
    void operator()(zxdg_output_v1* object) const { zxdg_output_v1_destroy(object); }
    void operator()(zwlr_layer_shell_v1* object) const { wl_proxy_destroy(reinterpret_cast<wl_proxy*>(object)); }
    void operator()(zwlr_layer_surface_v1* object) const { zwlr_layer_surface_v1_destroy(object); }
    void operator()(ext_image_capture_source_v1* object) const { ext_image_capture_source_v1_destroy(object); }
    void operator()(ext_output_image_capture_source_manager_v1* object) const {
        ext_output_image_capture_source_manager_v1_destroy(object);
    }
    void operator()(ext_image_copy_capture_manager_v1* object) const {
        ext_image_copy_capture_manager_v1_destroy(object);
    }
    void operator()(ext_image_copy_capture_cursor_session_v1* object) const {
        ext_image_copy_capture_cursor_session_v1_destroy(object);
    }
    void operator()(xx_hotkey_manager_v1* object) const { xx_hotkey_manager_v1_destroy(object); }
    void operator()(xx_hotkey_v1* object) const { xx_hotkey_v1_destroy(object); }
    // Their older versions have no request for the end.
    void operator()(org_kde_kwin_fake_input* object) const { org_kde_kwin_fake_input_destroy(object); }
    void operator()(kde_output_order_v1* object) const { kde_output_order_v1_destroy(object); }
    void operator()(zwlr_virtual_pointer_manager_v1* object) const { zwlr_virtual_pointer_manager_v1_destroy(object); }
    void operator()(zwlr_virtual_pointer_v1* object) const { zwlr_virtual_pointer_v1_destroy(object); }
};

/// Of fake_input: the first that moves to a place.
inline constexpr std::uint32_t fakeInputVersion = 3;

/// Owns an object of the connection; its end is sent with the next request.
template <typename Object>
using WaylandPointer = std::unique_ptr<Object, WaylandDeleter>;

}  // namespace vantrel::wayland
