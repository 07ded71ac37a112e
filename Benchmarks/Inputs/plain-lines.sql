select customer_id, first_name, last_name from sales.customer where city = 'Oslo' and zip_code between 150 and 990;
insert into sales.run_log values (4711, 'start of run #12', current_timestamp); -- see the plan of the night
update sales.[order line] set unit_price = 12.50 where order_no = 100482 and line_no = 3; /* corrected by hand */
select 'it''s', a.order_total, a.order_count from sales.year_total a where a.year_no = 2024 order by a.order_total desc;
delete from work.queue where state = 'done' and age_in_days > 30; /* item #7 of the cleaning list */
select count(*), sum(s.quantity) from sales.stock s where s.site_code in ('N', 'S') and s.quantity > s.reserved;
select * from sales.visit t where t.visit_day >= ?start day? and t.visit_day < current_date and t.kind = 3;
insert into sales.note (note_text, written_by, written_on) values ('call back on #12', current_user, current_date);
select case g.grade when 1 then 'very good' when 2 then 'good' else 'fair' end as grade_text from sales.grade g;
-- page #4: the lines of the cash book, one for each day and each till
update hr.person set email = 'none@example.org', changed_on = current_date where email is null and left_on is null;
select a.x, a.y, a.z as "Height above sea" from geo.point a where a.map_sheet = 1913 and a.tag = '#red';
grant select, insert, update on sales.order_head to order_clerk; -- ticket #8812, until the end of the year
select max(d.day_no), min(d.day_no) from [calendar #2] d where d.is_holiday = 1 and d.country_code = 'NO';
merge into work.target t using work.source s on (t.key_no = s.key_no) when matched then update set t.v = s.v; /* # */
select l.letter, l.position, l.letter_case from work.letter l where l.letter_case = 'mixed' and l.position < 27;
update [order line] set [unit price] = 12.50 where [order no] = 'A#100'; /* retail */
select "id", "name" from "customer" where "city" = 'Oslo' and "zip" = '0150';
where t.day = ?start day? and t.day < ?end day# 2? and k.kind = 'open item' -- prompts
select a.x, a.y /* both axes */ from "point" a where a.tag = '#red' or a.tag = '#blue';
