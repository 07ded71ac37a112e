select o.order_id, o.order_date, o.customer_id, l.line_no, l.product_id, l.quantity, l.unit_price, l.discount, l.quantity * l.unit_price as amount
from sales.order_head o join sales.order_line l on l.order_id = o.order_id join sales.product p on p.product_id = l.product_id where o.status = 'closed'
group by o.order_id, o.order_date, o.customer_id, l.line_no, l.product_id, l.quantity, l.unit_price, l.discount having sum(l.quantity) > 0
order by o.order_date, o.order_id, l.line_no fetch first 500 rows only; -- page #1
with totals as (select k.customer_id, sum(l.quantity * l.unit_price) as revenue, count(distinct o.order_id) as orders from sales.customer k
join sales.order_head o on o.customer_id = k.customer_id join sales.order_line l on l.order_id = o.order_id group by k.customer_id) select * from totals where revenue > 1000
insert into archive.order_line (order_id, line_no, product_id, quantity, unit_price, discount) select order_id, line_no, product_id, quantity, unit_price, discount from sales.order_line where year = '2019';
update sales.product set list_price = list_price * 1.03, changed_on = current_date, changed_by = current_user where group_id in (select group_id from sales.product_group where margin < 0.20);
create index order_line_by_product on sales.order_line (product_id, order_id, line_no) include (quantity, unit_price, discount); /* report #7 */
select extract(year from o.order_date) as y, extract(month from o.order_date) as m, count(*) as orders from sales.order_head o group by extract(year from o.order_date), extract(month from o.order_date);
