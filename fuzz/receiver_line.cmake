walrim_fuzz(receiver_line LINK walrim_receiver)
