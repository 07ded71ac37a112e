-- The best customers of a year whose revenue reaches a limit. Numbers are texts too and stand without quotes.
select c.name, sum(l.net_price + l.tax) as gross
from customer c
join sales_order o on o.customer_id = c.customer_id
join order_line l on l.order_id = o.order_id
where o.order_date like #"'" + $year + "-%'"#
group by c.name
having sum(l.net_price + l.tax) >= #$[at least]#
order by gross desc
limit #$count#;
