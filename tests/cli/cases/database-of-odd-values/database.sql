INSERT INTO meetings (id, title, start_time, duration_seconds, raw_transcript, formatted_notes, word_count, folder_id) VALUES
  (-4, x'41ff42', x'', 1e300, x'00', 12.5, 4294967298, 'a folder');
