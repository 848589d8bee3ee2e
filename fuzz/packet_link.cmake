walrim_fuzz(packet_link LINK walrim_device)
