#pragma once
/* Filling the device table from the registered-device service. */

/* Reads the service's list into gVeskTable, allowed devices first, and writes the table to the log. A failed read
 * leaves the table empty. device_count is not touched: callers ask vesk_get_table afterwards. */
void vesk_read_all();

/* Puts every allowed row before every denied one by exchanging rows. Allowed rows keep their order and denied ones do
 * not; the screens rely on exactly this order. */
void vesk_sort_table();
