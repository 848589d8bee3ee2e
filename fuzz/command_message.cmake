walrim_fuzz(command_message LINK walrim_text)
