#pragma once
/* Facts of the product, as the platform tells them. Each is asked for with every call. */

/* Stores the platform's integer `key` in `*out`, or 0 when it cannot be read. */
void get_system_info_int(const char *key, int *out);

/* Flags of the product; one that cannot be read is false. */
bool is_sound_mirroring_supported();
bool is_quince_supported(); /* an interactive board */
bool isJuniperLarchProduct();
bool is_sold_in_china();
