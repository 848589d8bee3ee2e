walrim_fuzz(http_answer LINK walrim_text)
